#include "widgets/ProjectPanel.h"

namespace orvista {

ProjectPanel::ProjectPanel() = default;

} // namespace orvista
