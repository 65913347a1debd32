#pragma once

#include "model/ProjectLifecycle.h"

#include <QObject>

class QWidget;

namespace orvista {

class OpenNotes;

/// Tools > Names and Display….
class NamesCommand final : public QObject {
    Q_OBJECT
public:
    /// All must outlive the command.
    NamesCommand(const DocMgrModule::ProjectLifecycle& lifecycle, OpenNotes& notes, QWidget& window);

    void miToolsNames_Click();

private:
    QString hindrance() const;

    const DocMgrModule::ProjectLifecycle& lifecycle_;
    OpenNotes& notes_;
    QWidget& window_;
};

} // namespace orvista
