#include "dialogs/DriveList.h"

#include "dialogs/FolderContents.h"
#include "widgets/PathText.h"

#include <QSignalBlocker>

namespace orvista {

DriveList::DriveList(const PathRules& rules, QWidget* parent) : DropDownList(parent) {
    for (const Drive& drive : drives(rules)) {
        const QString root = shownPath(drive.root);
        const QString label = QString::fromStdString(drive.label);
        addItem(label.isEmpty() ? root : root + QStringLiteral(" [") + label + u']', root);
    }
    connect(this, &QComboBox::currentIndexChanged, this, &DriveList::driveChosen);
    connect(this, &QComboBox::activated, this, &DriveList::driveChosen);
}

std::string DriveList::drive() const {
    return pathFromShown(currentData().toString());
}

void DriveList::showDriveOf(const std::string& folder) {
    const QSignalBlocker quiet(this);
    const QString path = shownPath(folder);
    int best = 0;
    qsizetype longest = 0;
    for (int i = 0; i < count(); ++i) {
        const QString root = itemData(i).toString();
        const bool endsInSeparator = root.endsWith(u'/') || root.endsWith(u'\\');
        const bool holds = path.startsWith(root) &&
                           (endsInSeparator || path.size() == root.size() || path[root.size()] == u'/');
        if (holds && root.size() > longest) {
            best = i;
            longest = root.size();
        }
    }
    setCurrentIndex(best);
}

} // namespace orvista
