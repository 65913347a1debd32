#include "mainwindow/ProjectTools.h"

#include "mainwindow/Commands.h"
#include "mainwindow/MessageListPage.h"
#include "mainwindow/ModbusSettingPage.h"
#include "mainwindow/Navigator.h"
#include "mainwindow/PanelDock.h"
#include "mainwindow/VariableListPage.h"
#include "model/ItemKind.h"

#include <QAction>
#include <QMainWindow>

namespace orvista {

ProjectTools::ProjectTools(Commands& commands, const Pages& pages, QMainWindow& window)
    : QObject(&window),
      commands_(commands),
      dock_(new PanelDock(window)),
      navigator_(new Navigator(
          commands,
          {{&regularMessages, "miOptionMsgLst", &pages.messages},
           {&emergencyMessages, "miOptionMsgLst", &pages.messages},
           {&floatVariables, "miVarLst", &pages.variables},
           {&booleanVariables, "miVarLst", &pages.variables},
           {nullptr, "miOptionModbusSetting", &pages.addresses}},
          [this](const QString& text) { dock_->showNotice(text); }, this)) {}

MenuRow ProjectTools::editMenu() {
    return {.name = "mnuEdit", .caption = tr("&Edit"), .commands = {}, .restUnderDialogs = true};
}

MenuRow ProjectTools::viewMenu() {
    return {.name = "mnuView", .caption = tr("&View"), .commands = {}, .restUnderDialogs = true};
}

MenuRow ProjectTools::toolsMenu() {
    return {.name = "mnuTools", .caption = tr("&Tools"), .commands = {}, .restUnderDialogs = true};
}

} // namespace orvista
