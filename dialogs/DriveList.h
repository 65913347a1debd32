#pragma once

#include "model/PathRules.h"
#include "widgets/DropDownList.h"

#include <string>

namespace orvista {

/// The drives of the platform: drive letters, or the mounted volumes with the root first.
class DriveList : public DropDownList {
    Q_OBJECT
public:
    explicit DriveList(const PathRules& rules, QWidget* parent = nullptr);

    /// The root folder of the chosen drive, UTF-8.
    std::string drive() const;
    /// Shows the drive that holds the folder.
    void showDriveOf(const std::string& folder);

signals:
    /// Another drive was chosen, or the shown one again, which leads back to its root.
    void driveChosen();
};

} // namespace orvista
