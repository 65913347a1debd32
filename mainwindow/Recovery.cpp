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

/// How many names of a list are shown.
constexpr qsizetype mostNames = 8;

/// Of the line in the dock, and of its button.
constexpr const char* recoveryOffer = "UnsavedWork";
constexpr const char* noCopyNotice = "NoCopy";

/// \param names of the pages that come before the items
QString phrase(QStringList names, const std::vector<Item>& items) {
    for (const Item item : items)
        names << QString::fromStdString(nameOf(item));
    const QString text = names.mid(0, mostNames).join(QStringLiteral(", "));
    return names.size() > mostNames ? Recovery::tr("%1 and %2 more").arg(text).arg(names.size() - mostNames)
                                    : text;
}

QString phrase(const UnsavedDifferences& differences) {
    QStringList parts;
    if (!differences.isSaved)
        parts << Recovery::tr("was never saved");
    const QStringList pages(differences.hasSystemPage ? 1 : 0, QStringLiteral("System"));
    if (!pages.empty() || !differences.items.empty())
        parts << phrase(pages, differences.items);
    if (!differences.notApplied.empty())
        parts << Recovery::tr("not applied: %1").arg(phrase({}, differences.notApplied));
    return parts.isEmpty() ? Recovery::tr("nothing") : parts.join(QStringLiteral("; "));
}

QString ofNewerVersion() {
    return Recovery::tr("was written by a newer version of the program");
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
    if (!settings.folder.isEmpty())
        connect(keeper_, &RecoveryKeeper::failed, this,
                [this, folder = settings.folder] { tellNotKept(folder); });
}

void Recovery::tellNotKept(const QString& folder) {
    if (std::exchange(hasToldNotKept_, true))
        return;
    around_.dock.offer({QString::fromLatin1(noCopyNotice),
                        tr("No copy of unsaved work can be kept in %1. Save often, and see that this folder "
                           "can be written and that the disk is not full.")
                            .arg(shownPath(folder.toStdString())),
                        {},
                        nullptr});
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
    std::vector<RecoveryFolder::Copy> copies = keeper_->folder().abandoned();
    frmRestore dialog(
        rowsOf(copies), [&](std::size_t row) { return remove(copies, row); }, &around_.window);
    dialog.exec();
    if (!dialog.IsCanceled)
        open(copies.at(static_cast<std::size_t>(dialog.chosen)).path);
}

bool Recovery::remove(std::vector<RecoveryFolder::Copy>& copies, std::size_t row) {
    const QString path = copies.at(row).path;
    if (!RecoveryFolder::removeAbandoned(path)) {
        around_.messages.show(MessageIcon::Exclamation, "Unable to remove " + path.toStdString());
        return false;
    }
    copies.erase(copies.begin() + static_cast<std::ptrdiff_t>(row));
    return true;
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
        return {copy.written, shownPath(copy.path.toStdString()),
                RecoveryFolder::isOfNewerVersion(copy.path) ? ofNewerVersion() : tr("cannot be read")};
    const PathRules& paths = lifecycle_.environment().paths;
    return {copy.written, shownPath(paths.join(work->project.ProjPath, work->project.ProjName)),
            phrase(unsavedDifferences(*work, paths))};
}

void Recovery::open(const QString& path) {
    auto claimed = RecoveryFolder::claim(path);
    if (!claimed) {
        const std::string why =
            RecoveryFolder::isOfNewerVersion(path) ? ": it " + ofNewerVersion().toStdString() : "";
        return around_.messages.show(MessageIcon::Exclamation, "Unable to open " + path.toStdString() + why);
    }
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
