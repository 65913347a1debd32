#pragma once

#include "widgets/DropDownList.h"

#include <memory>
#include <vector>

namespace orvista {

class MasterView;
struct FleetDisplay;

/// The list `cboPreviewDisplay`: with the values of which display a master's places are shown. Other projects
/// have nothing to choose, and do not see it.
class DisplaysList final : public DropDownList {
    Q_OBJECT
public:
    explicit DisplaysList(QWidget* parent = nullptr);

    /// Offers the displays of the master, if the project is one.
    void show(const MasterView& view);

signals:
    /// \param name empty for "as typed"
    void displayChosen(const QString& name);

private:
    void offer(const std::vector<FleetDisplay>& displays);

    std::shared_ptr<const std::vector<FleetDisplay>> displays_; ///< whose names are offered
    QStringList names_;
};

} // namespace orvista
