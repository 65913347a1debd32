#include "mainwindow/DiscardedScriptsMenu.h"

#include "mainwindow/MessageListPage.h"
#include "mainwindow/Navigator.h"
#include "widgets/DeviceText.h"
#include "widgets/ModalDialogs.h"

#include <QAction>
#include <QLocale>

namespace orvista {

namespace {

/// Of a script, in the tool-tip.
constexpr qsizetype charactersTold = 400;

QString beginningOf(const std::string& script) {
    const QString shown = shownScript(script.substr(0, charactersTold));
    return static_cast<qsizetype>(script.size()) > charactersTold ? shown + u'…' : shown;
}

} // namespace

DiscardedScriptsMenu::DiscardedScriptsMenu(MessageListPage& page, Navigator& navigator, QWidget& window)
    : QMenu(&window), page_(page), navigator_(navigator) {
    setObjectName(QStringLiteral("mnuEditRestoreScript"));
    setToolTipsVisible(true);
    connect(this, &QMenu::aboutToShow, this, &DiscardedScriptsMenu::fill);
    connect(&page, &MessageListPage::discarded, this, [this](Item item, const std::string& script) {
        scripts_.add(item, script, QDateTime::currentDateTime());
    });
}

void DiscardedScriptsMenu::fill() {
    clear();
    for (const DiscardedScripts::Entry& entry : scripts_.entries()) {
        const QString time = QLocale().toString(entry.time.time(), QLocale::ShortFormat);
        QAction* const action =
            addAction(QStringLiteral("%1, %2").arg(QString::fromStdString(nameOf(entry.item)), time));
        action->setToolTip(beginningOf(entry.script));
        // By value: the list changes while a script is restored.
        connect(action, &QAction::triggered, this, [this, entry] { restore(entry); });
    }
    if (isEmpty())
        addAction(tr("Nothing was thrown away"))->setEnabled(false);
}

void DiscardedScriptsMenu::restore(const DiscardedScripts::Entry& entry) {
    if (isModalDialogOpen())
        return;
    // Only the same script a second time means that the edit in the way may go.
    if (chosen_ != entry.time)
        navigator_.clear();
    chosen_ = entry.time;
    navigator_.goTo({entry.item});
    if (page_.shownItem() == entry.item)
        page_.typeScript(entry.script);
}

} // namespace orvista
