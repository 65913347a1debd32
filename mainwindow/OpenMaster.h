#pragma once

#include "items/MasterView.h"
#include "model/FileStamp.h"

#include <QObject>
#include <QTimer>

#include <optional>
#include <string>

namespace orvista {

class DisplayPreview;
class OpenNotes;
class PanelDock;

/// The list of the open project's displays, if the notes make it a master, and which of them is shown. The
/// list is read again when it changes on the disk. A line in the dock says why it cannot be used.
class OpenMaster final : public QObject {
    Q_OBJECT
public:
    /// All must outlive the object. \param preview gets the columns of the display that is chosen there
    OpenMaster(const Project& project, const OpenNotes& notes, DisplayPreview& preview, PanelDock& dock,
               QObject* parent);

    const MasterView& view() const { return view_; }
    /// The name of the first place; empty for a project that has none, or is no master.
    std::string firstPlace() const;
    /// The notes or the project's path may be others.
    void follow();
    /// Looks whether the list has changed. While the preview is on the screen in the active window it does so
    /// twice a second.
    void look();

signals:
    /// The project is a master now, or none any more; its displays or the shown one are others.
    void changed();

private:
    void choose(const QString& name);
    /// What lies on the disk now.
    struct ListFile {
        std::string bytes;
        std::string fault; ///< why it cannot be read; empty where it was
        bool operator==(const ListFile&) const = default;
    };
    static ListFile readFile(const std::string& path);
    void take(ListFile file);
    void tell(const QString& fault);

    const Project& project_;
    const OpenNotes& notes_;
    DisplayPreview& preview_;
    PanelDock& dock_;
    MasterView view_;
    std::string projectFile_;
    std::string path_;             ///< of the list; empty for no master
    std::optional<ListFile> read_; ///< nothing until it was read
    std::optional<FileStamp> stamp_;
    bool isSettled_ = false; ///< whether a later change is sure to show in the stamp
    QTimer timer_{this};
};

} // namespace orvista
