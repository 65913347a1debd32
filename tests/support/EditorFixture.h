#pragma once

#include "mainwindow/HelpOpener.h"
#include "mainwindow/frmMain.h"
#include "tests/support/ScriptedPeople.h"
#include "tests/support/TemporaryFolder.h"

#include <QAction>
#include <QLineEdit>
#include <QTest>

#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

class QTreeWidgetItem;

namespace orvista {
class ItemTree;
} // namespace orvista

namespace orvista::testing {

class RecordedHelp final : public HelpOpener {
public:
    void open(const std::string& path) override { opened.push_back(path); }
    void openPage(const std::string& path, const std::string& page) override {
        openedPages.push_back(path + " " + page);
    }
    std::vector<std::string> opened;
    std::vector<std::string> openedPages;
};

/// The real main window with scripted people, a program folder and a project folder of its own. What a test
/// uses must exist and be enabled: anything else throws, which fails the test.
class EditorFixture {
public:
    EditorFixture();
    ~EditorFixture();

    /// Makes the window, as the program's start does, without showing it.
    frmMain& load();
    /// Shows the loaded window and waits until its first activation was served.
    frmMain& start();
    /// A started window with an unsaved new project of that name in the project folder.
    frmMain& startWithNewProject(const std::string& name = "Line3");

    /// New through its menu entry; the dialog answers with this project.
    void newProject(const std::string& name);
    void openProject(const std::string& name);
    ChosenProject projectNamed(const std::string& name) const { return {projectFolder.path(), name}; }

    template <typename Widget>
    Widget* find(const char* name) const {
        auto* const widget = window->findChild<Widget*>(QString::fromLatin1(name));
        if (!widget)
            throw std::logic_error(std::string("no ") + name);
        return widget;
    }

    bool enabled(const char* actionName) const { return find<QAction>(actionName)->isEnabled(); }
    void trigger(const char* actionName) const;
    void click(const char* buttonName) const;
    QString text(const char* boxName) const;
    /// The text of the label whose buddy the box is.
    QString label(const char* boxName) const;
    /// What stands beside the Apply button of the shown page; empty when nothing is to be seen there.
    QString notAppliedMark() const;
    /// What stands in the line below the panels; empty when nothing is to be seen there.
    QString notice() const;
    /// Replaces a box's text by typing.
    void type(const char* boxName, const QString& text) const;

    /// Gives the window this size (pixels) at the usual letters; larger ones make it as much larger.
    QSize resizeToLetters(QSize usual) const;

    /// Shows the page of that navigation key by a click on its node.
    void showPage(const char* key) const;
    QTreeWidgetItem* node(ItemTree& tree, const QString& key) const;
    void clickNode(const char* treeName, const char* key) const;
    void showVariable(const char* key) const;
    void showMessage(const char* key) const;

    QString title() const { return window->windowTitle(); }

    TemporaryFolder programFolder;
    TemporaryFolder projectFolder;
    ScriptedMessages messages;
    ScriptedChooser chooser;
    RecordedHelp help;
    std::optional<TryOutSettings> tryOut;
    int programEnds = 0;
    std::uint16_t modbusPort = 1; ///< where the monitor reads; a test that has a display sets its port
    RecoverySettings recovery;    ///< nothing is kept unless a folder is set before load()
    DocMgrModule::ProgramEnvironment environment;
    Project project;
    ConfigModule::History history;
    std::unique_ptr<frmMain> window;
};

} // namespace orvista::testing
