#include "mainwindow/Recovery.h"

#include "compare/UnsavedDifferences.h"
#include "mainwindow/ItemPage.h"
#include "mainwindow/Navigator.h"
#include "mainwindow/PanelDock.h"
#include "model/ProjectLifecycle.h"
#include "widgets/PathText.h"

#include <utility>

namespace orvista {

namespace {

/// So many names of a list are told.
constexpr std::size_t namesTold = 8;

/// Of the line in the dock, and of its button.
constexpr const char* recoveryOffer = "UnsavedWork";

QString told(const std::vector<std::string>& names) {
    QStringList list;
    for (const std::string& name : names) {
        if (list.size() == namesTold)
            break;
        list << QString::fromStdString(name);
    }
    const QString text = list.join(QStringLiteral(", "));
    return names.size() > namesTold ? Recovery::tr("%1 and %2 more").arg(text).arg(names.size() - namesTold)
                                    : text;
}

QString told(const UnsavedDifferences& differences) {
    QStringList parts;
    if (!differences.isSaved)
        parts << Recovery::tr("was never saved");
    if (!differences.items.empty())
        parts << told(differences.items);
    if (!differences.notApplied.empty())
        parts << Recovery::tr("not applied: %1").arg(told(differences.notApplied));
    return parts.isEmpty() ? Recovery::tr("nothing") : parts.join(QStringLiteral("; "));
}

} // namespace

Recovery::Recovery(DocMgrModule::ProjectLifecycle& lifecycle, const Surroundings& surroundings,
                   std::vector<ItemPage*> pages, const RecoverySettings& settings)
    : QObject(&surroundings.window),
      lifecycle_(lifecycle),
      around_(surroundings),
      pages_(std::move(pages)),
      keeper_(new RecoveryKeeper(lifecycle.project(), {pages_.begin(), pages_.end()}, settings, this)) {
    connect(&around_.dock, &PanelDock::shownChanged, this, &Recovery::tellOnce);
}

/// Looked for with the first sight of the dock only: the start is to cost nothing, and to show nothing.
void Recovery::tellOnce(bool dockShown) {
    if (!dockShown || std::exchange(hasTold_, true) || keeper_->folder().abandoned().empty())
        return;
    around_.dock.offer({QString::fromLatin1(recoveryOffer), tr("Unsaved work was found"), tr("Restore…"),
                        [this] { miToolsRestore_Click(); }});
}

void Recovery::miToolsRestore_Click() {
    around_.dock.withdraw(QString::fromLatin1(recoveryOffer));
    const std::vector<RecoveryFolder::Copy> copies = keeper_->folder().abandoned();
    frmRestore dialog(rowsOf(copies), &around_.window);
    dialog.exec();
    if (!dialog.IsCanceled)
        open(copies.at(static_cast<std::size_t>(dialog.chosen)).path);
}

std::vector<frmRestore::Row> Recovery::rowsOf(const std::vector<RecoveryFolder::Copy>& copies) const {
    std::vector<frmRestore::Row> rows;
    rows.reserve(copies.size());
    for (const RecoveryFolder::Copy& copy : copies)
        rows.push_back(rowOf(copy));
    return rows;
}

frmRestore::Row Recovery::rowOf(const RecoveryFolder::Copy& copy) const {
    const auto work = RecoveryFolder::read(copy.path);
    if (!work)
        return {copy.written, shownPath(copy.path.toStdString()), tr("cannot be read")};
    const PathRules& paths = lifecycle_.environment().paths;
    return {copy.written, shownPath(paths.join(work->project.ProjPath, work->project.ProjName)),
            told(unsavedDifferences(*work, paths))};
}

void Recovery::open(const QString& path) {
    auto claimed = RecoveryFolder::claim(path);
    if (!claimed)
        return around_.messages.show(MessageIcon::Exclamation, "Unable to open " + path.toStdString());
    if (!lifecycle_.openUnsavedWork(claimed->work.project))
        return;
    const std::vector<NotAppliedTexts> notApplied = claimed->work.notApplied;
    keeper_->folder().adopt(std::move(*claimed));
    for (const NotAppliedTexts& item : notApplied) {
        around_.navigator.goTo({item.item});
        for (ItemPage* const page : pages_)
            if (page->shownItem() == item.item)
                page->putBack(item.texts);
    }
}

} // namespace orvista
