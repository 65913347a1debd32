#include "mainwindow/MainMenu.h"

#include "mainwindow/CommandAction.h"

#include <QMenu>
#include <QMenuBar>

#include <initializer_list>

namespace orvista {

namespace {

void addMenu(QMenuBar& bar, const QString& name, const QString& caption,
             std::initializer_list<QAction*> entries) {
    QMenu* const menu = bar.addMenu(caption);
    menu->setObjectName(name);
    for (QAction* entry : entries)
        menu->addAction(entry);
}

} // namespace

MainMenu::MainMenu(QMenuBar& bar, QObject* owner)
    : miFileNew(commandAction(owner, QStringLiteral("miFileNew"), QStringLiteral("&New"))),
      miFileOpen(commandAction(owner, QStringLiteral("miFileOpen"), QStringLiteral("&Open"))),
      miFileSave(commandAction(owner, QStringLiteral("miFileSave"), QStringLiteral("Save"))),
      miFileSaveAs(commandAction(owner, QStringLiteral("miFileSaveAs"), QStringLiteral("Save as"))),
      miFileExit(commandAction(owner, QStringLiteral("miFileExit"), QStringLiteral("Exit"))),
      miLinkUpload(
          commandAction(owner, QStringLiteral("miLinkUpload"), QStringLiteral("Upload Project to Ulvo"))),
      miLinkDownload(commandAction(owner, QStringLiteral("miLinkDownload"),
                                   QStringLiteral("Download Project from Ulvo"))),
      miOptionSystemCfg(commandAction(owner, QStringLiteral("miOptionSystemCfg"), QStringLiteral("System"))),
      miOptionModbusSetting(
          commandAction(owner, QStringLiteral("miOptionModbusSetting"), QStringLiteral("Modbus Setting"))),
      miVarLst(commandAction(owner, QStringLiteral("miVarLst"), QStringLiteral("Variable List"))),
      miOptionMsgLst(commandAction(owner, QStringLiteral("miOptionMsgLst"), QStringLiteral("Message List"))),
      miHelpContext(commandAction(owner, QStringLiteral("miHelpContext"), QStringLiteral("Context"))),
      miHelpAbout(commandAction(owner, QStringLiteral("miHelpAbout"), QStringLiteral("About Quillmark"))) {
    addMenu(bar, QStringLiteral("mnuFile"), QStringLiteral("&File"),
            {miFileNew, miFileOpen, miFileSave, miFileSaveAs, miFileExit});
    addMenu(bar, QStringLiteral("mnuLink"), QStringLiteral("&Link"), {miLinkUpload, miLinkDownload});
    addMenu(bar, QStringLiteral("mnuOption"), QStringLiteral("&Option"),
            {miOptionSystemCfg, miOptionModbusSetting, miVarLst, miOptionMsgLst});
    addMenu(bar, QStringLiteral("mnuHelp"), QStringLiteral("&Help"), {miHelpContext, miHelpAbout});

    // Written out, since the platforms' standard keys differ (some have none for Save as).
    miFileNew->setShortcut(Qt::CTRL | Qt::Key_N);
    miFileOpen->setShortcut(Qt::CTRL | Qt::Key_O);
    miFileSave->setShortcut(Qt::CTRL | Qt::Key_S);
    miFileSaveAs->setShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_S);
    miHelpContext->setShortcut(Qt::Key_F1);
    // Elsewhere Qt would move these by their captions.
    for (QAction* entry : {miFileExit, miHelpAbout, miOptionSystemCfg, miOptionModbusSetting})
        entry->setMenuRole(QAction::NoRole);
}

void MainMenu::showCommandStates(const CommandStates& states) {
    miFileSave->setEnabled(states.miFileSave);
    miFileSaveAs->setEnabled(states.miFileSaveAs);
    miLinkUpload->setEnabled(states.miLinkUpload);
    miOptionSystemCfg->setEnabled(states.miOptionSystemCfg);
    miOptionModbusSetting->setEnabled(states.miOptionModbusSetting);
    miVarLst->setEnabled(states.miVarLst);
    miOptionMsgLst->setEnabled(states.miOptionMsgLst);
}

} // namespace orvista
