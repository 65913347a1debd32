#pragma once

#include "model/CommandStates.h"

class QAction;
class QMenuBar;
class QObject;

namespace orvista {

/// The entries of the menu bar.
class MainMenu {
public:
    /// Fills `bar`; the actions belong to `owner`, whose shortcuts they are.
    MainMenu(QMenuBar& bar, QObject* owner);

    void showCommandStates(const CommandStates& states);

    QAction* miFileNew;
    QAction* miFileOpen;
    QAction* miFileSave;
    QAction* miFileSaveAs;
    QAction* miFileExit;
    QAction* miLinkUpload;
    QAction* miLinkDownload;
    QAction* miOptionSystemCfg;
    QAction* miOptionModbusSetting;
    QAction* miVarLst;
    QAction* miOptionMsgLst;
    QAction* miHelpContext;
    QAction* miHelpAbout;
};

} // namespace orvista
