#pragma once

#include "check/Finding.h"
#include "display/FolderBitmaps.h"
#include "items/MasterView.h"
#include "model/Project.h"

#include <QObject>

#include <functional>
#include <optional>
#include <string>

class QHelpEvent;

namespace orvista {

class DeviceTextEdit;
class SeenDelay;

/// Underlines in a script box what is found in its text, and tells what in tool-tips. Nothing of it is part
/// of the text: neither the bytes nor undo know of it, and no signal of the box is fired.
class ScriptUnderlines final : public QObject {
    Q_OBJECT
public:
    /// What the box shows, and on how wide a panel.
    struct Subject {
        std::function<std::optional<Item>()> message; ///< nothing where none is shown
        std::function<int()> columns;
    };

    /// All must outlive the object.
    ScriptUnderlines(DeviceTextEdit& box, const Project& project, Subject subject, QObject* parent);

    /// How the project is looked at; must outlive the object. In a master places are underlined, too.
    void useMaster(const MasterView& view) { master_ = &view; }

    /// Something else than the text may have changed.
    void checkSoon();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void check();
    void underline(const Findings& findings, const std::string& script);
    bool tell(const QHelpEvent& event) const;

    DeviceTextEdit& box_;
    const Project& project_;
    Subject subject_;
    const MasterView* master_ = nullptr;
    std::string bitmapFolder_;
    std::optional<FolderBitmaps> bitmaps_;
    SeenDelay* delay_;
};

} // namespace orvista
