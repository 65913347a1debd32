#include "mainwindow/ToolBar.h"

#include "mainwindow/Commands.h"
#include "mainwindow/ToolIcons.h"

#include <QAction>
#include <QIcon>

namespace orvista {

namespace {

struct Button {
    const char* caption;
    const char* key;
    const char* toolTip;
    const char* description;
    QIcon (*icon)();
    const char* command;               ///< whose menu entry it is enabled with
    const EnablingRule* own = nullptr; ///< for the button that is enabled by a rule of its own
};

// The last two describe the files in the tool-tip and the device in the description, the others the reverse.
constexpr Button buttons[] = {
    {"New", "NEW", "Create New Orvista Project", "New Project Files", ToolIcons::newProject, "miFileNew"},
    {"Open", "OPEN", "Open Existing Orvista Project", "Open Project Files", ToolIcons::openProject,
     "miFileOpen"},
    {"Save", "SAVE", "Save Current Orvista Project", "Save Project Files", ToolIcons::saveProject,
     "miFileSave"},
    {"Upload", "UPLOAD", "Upload Project Files", "Upload Setting to Ulvo LX400D", ToolIcons::upload,
     "miLinkUpload", &EnablingRules::uploadButton},
    {"Download", "DOWNLOAD", "Download Project Files", "Download Setting from Ulvo LX400D",
     ToolIcons::download, "miLinkDownload"},
};

QAction* buttonAction(const Button& button, QObject* parent) {
    auto* const action = new QAction(QString::fromLatin1(button.caption), parent);
    action->setObjectName(QString::fromLatin1(button.key));
    action->setIcon(button.icon());
    action->setToolTip(QString::fromLatin1(button.toolTip));
    action->setWhatsThis(QString::fromLatin1(button.description));
    return action;
}

} // namespace

ToolBar::ToolBar(Commands& commands, QWidget* parent) : QToolBar(tr("Toolbar"), parent), commands_(commands) {
    setObjectName(QStringLiteral("ToolbarMain"));
    setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    setMovable(false);
    setContextMenuPolicy(Qt::PreventContextMenu); // nothing would bring a hidden toolbar back
    for (const Button& button : buttons) {
        QAction* const action = buttonAction(button, this);
        addAction(action);
        if (button.own)
            commands.observe(*button.own, [action](bool enabled) { action->setEnabled(enabled); });
        else
            connect(&commands.action(button.command), &QAction::enabledChanged, action, &QAction::setEnabled);
    }
    connect(this, &QToolBar::actionTriggered, this,
            [this](const QAction* action) { emit ButtonClick(action->objectName()); });
}

void ToolBar::run(const QString& key) {
    for (const Button& button : buttons) {
        if (key == QLatin1String(button.key))
            commands_.run(button.command);
    }
}

} // namespace orvista
