#pragma once

#include "model/People.h"

#include <QPointer>
#include <QWidget>

#include <string>

namespace orvista {

/// Message boxes under the program's title. Texts are shown as they are, never read as markup, and can be
/// selected.
class DialogMessages final : public Messages {
public:
    explicit DialogMessages(QWidget* parent = nullptr) : parent_(parent) {}
    /// The boxes are modal to `parent`, which is often made after the one who shows them.
    void useParent(QWidget* parent) { parent_ = parent; }

    void show(MessageIcon icon, const std::string& text) override;
    /// Neither Esc nor the window frame answers: there is no cancel.
    bool askYesNo(const std::string& text) override;
    /// Esc and the window frame answer Cancel.
    Answer askYesNoCancel(const std::string& text) override;

private:
    QPointer<QWidget> parent_;
};

/// Asks before a file is replaced; No is the default.
/// \param path UTF-8
bool confirmReplacing(QWidget* parent, const std::string& path);

enum class ReloadChoice { Discard, Keep, Compare };
/// Asks before a project file is read again over changes; to keep them is the default.
/// \param file its name
ReloadChoice chooseReload(QWidget* parent, const QString& file);

} // namespace orvista
