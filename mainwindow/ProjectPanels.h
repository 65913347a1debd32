#pragma once

#include "check/FolderCheck.h"
#include "display/forms/PreviewSetting.h"
#include "items/MessageDigest.h"
#include "mainwindow/PanelDock.h"
#include "model/FileRemarks.h"

#include <cstdint>
#include <vector>

namespace orvista {

class DisplayPreview;
class MasterView;
class Navigator;
class ProjectNotes;
class TcpTesterPage;
struct ItemSources;

/// The panels of the dock, one row for each, and what they share.
class ProjectPanels final : public QObject {
    Q_OBJECT
public:
    struct Surroundings {
        const ProjectNotes& notes;
        const MasterView& master;       ///< how the project is looked at
        const FileRemarks& fileRemarks; ///< of the files that the project was read from
        DisplayPreview& preview;        ///< whose columns and clock the panels go by
        TcpTesterPage& tester;
        std::uint16_t modbusPort; ///< where the display speaks Modbus
    };
    /// Adds the panels to the dock.
    ProjectPanels(const Project& project, const Surroundings& surroundings, Navigator& navigator,
                  PanelDock& dock);

private:
    std::vector<PanelDock::Panel> rows();
    ProjectPanel* makeComparison();
    ProjectPanel* makeMonitor();
    std::function<std::vector<Item>()> notAppliedItems() const;
    PreviewSettingSource setting() const;
    ItemSources itemSources();
    template <typename Type>
    Type* followingColumns(Type* panel);
    template <typename Type>
    Type* showingNotes(Type* panel);

    const Project& project_;
    Surroundings around_;
    const Navigator& navigator_;
    FolderCheck check_;
    MessageDigests digests_;
};

} // namespace orvista
