#include "mainwindow/ToolBar.h"

#include "mainwindow/CommandAction.h"
#include "mainwindow/ToolIcons.h"

#include <QIcon>

namespace orvista {

namespace {

struct Button {
    const char* caption;
    const char* key;
    const char* toolTip;
    const char* description;
    QIcon (*icon)();
};

// The last two describe the files in the tool-tip and the device in the description, the others the reverse.
constexpr Button buttons[] = {
    {"New", "NEW", "Create New Orvista Project", "New Project Files", ToolIcons::newProject},
    {"Open", "OPEN", "Open Existing Orvista Project", "Open Project Files", ToolIcons::openProject},
    {"Save", "SAVE", "Save Current Orvista Project", "Save Project Files", ToolIcons::saveProject},
    {"Upload", "UPLOAD", "Upload Project Files", "Upload Setting to Ulvo LX400D", ToolIcons::upload},
    {"Download", "DOWNLOAD", "Download Project Files", "Download Setting from Ulvo LX400D",
     ToolIcons::download},
};

} // namespace

ToolBar::ToolBar(QWidget* parent) : QToolBar(tr("Toolbar"), parent) {
    setObjectName(QStringLiteral("ToolbarMain"));
    setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    setMovable(false);
    setContextMenuPolicy(Qt::PreventContextMenu); // nothing would bring a hidden toolbar back
    for (const Button& button : buttons) {
        QAction* const action =
            commandAction(this, QString::fromLatin1(button.key), QString::fromLatin1(button.caption));
        action->setIcon(button.icon());
        action->setToolTip(QString::fromLatin1(button.toolTip));
        action->setWhatsThis(QString::fromLatin1(button.description));
        addAction(action);
    }
    save_ = findChild<QAction*>(QStringLiteral("SAVE"));
    upload_ = findChild<QAction*>(QStringLiteral("UPLOAD"));
    connect(this, &QToolBar::actionTriggered, this,
            [this](const QAction* action) { emit ButtonClick(action->objectName()); });
}

void ToolBar::showCommandStates(const CommandStates& states) {
    save_->setEnabled(states.toolbarSave);
    upload_->setEnabled(states.toolbarUpload);
}

} // namespace orvista
