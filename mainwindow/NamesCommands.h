#pragma once

#include "model/ProjectLifecycle.h"

#include <QObject>

#include <string>
#include <vector>

class QWidget;

namespace orvista {

class OpenNotes;

struct NoteChange;

/// Tools > Names and Display…, and tables of names.
class NamesCommands final : public QObject {
    Q_OBJECT
public:
    /// All must outlive the object.
    NamesCommands(const DocMgrModule::ProjectLifecycle& lifecycle, OpenNotes& notes, QWidget& window);

    void miToolsNames_Click();
    /// Shows the same with what the table says, to be written by OK. \param path UTF-8
    void import(const std::string& path, const std::string& bytes);

private:
    void edit(const QString& table, std::vector<NoteChange> changes);
    QString hindrance() const;

    const DocMgrModule::ProjectLifecycle& lifecycle_;
    OpenNotes& notes_;
    QWidget& window_;
};

} // namespace orvista
