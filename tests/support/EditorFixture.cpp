#include "tests/support/EditorFixture.h"

#include "mainwindow/ItemTree.h"
#include "tests/support/InView.h"

#include <QAbstractButton>
#include <QLabel>
#include <QTabWidget>
#include <QTreeWidgetItemIterator>

namespace orvista::testing {

namespace {

void require(bool condition, const std::string& what) {
    if (!condition)
        throw std::logic_error(what);
}

} // namespace

EditorFixture::EditorFixture()
    : environment{programFolder.path(), PathRules::native()},
      history(environment.paths, environment.programFolder) {}

EditorFixture::~EditorFixture() = default;

frmMain& EditorFixture::load() {
    window = std::make_unique<frmMain>(project, history, environment,
                                       MainWindowSeams{messages, chooser, help, [this] { ++programEnds; },
                                                       PreviewClock::system(), recovery, modbusPort, tryOut});
    return *window;
}

frmMain& EditorFixture::start() {
    load();
    window->show();
    require(QTest::qWaitForWindowExposed(window.get()), "the window does not show");
    require(QTest::qWaitFor([this] { return chooser.startupsShown == 1; }), "no start-up dialog");
    return *window;
}

frmMain& EditorFixture::startWithNewProject(const std::string& name) {
    start();
    newProject(name);
    return *window;
}

void EditorFixture::newProject(const std::string& name) {
    chooser.newProjects.push_back(projectNamed(name));
    trigger("miFileNew");
}

void EditorFixture::openProject(const std::string& name) {
    chooser.existingProjects.push_back(projectNamed(name));
    trigger("miFileOpen");
}

void EditorFixture::trigger(const char* actionName) const {
    auto* const action = find<QAction>(actionName);
    require(action->isEnabled(), std::string(actionName) + " is disabled");
    action->trigger();
}

void EditorFixture::click(const char* buttonName) const {
    auto* const button = find<QAbstractButton>(buttonName);
    require(button->isEnabled() && button->isVisible(), std::string(buttonName) + " cannot be clicked");
    // At the left, since the area of a check box beyond its text takes no clicks.
    const QPoint place(button->height() / 2, button->height() / 2);
    bringIntoView(*button, place);
    QTest::mouseClick(button, Qt::LeftButton, {}, place);
}

QString EditorFixture::text(const char* boxName) const {
    return find<QLineEdit>(boxName)->text();
}

QString EditorFixture::label(const char* boxName) const {
    const auto* const box = find<QWidget>(boxName);
    for (const QLabel* label : window->findChildren<QLabel*>()) {
        if (label->buddy() == box)
            return label->text();
    }
    throw std::logic_error(std::string("no label for ") + boxName);
}

QString EditorFixture::notAppliedMark() const {
    const auto* const label =
        find<QTabWidget>("tabDetails")->currentWidget()->findChild<QLabel*>(QStringLiteral("lblNotApplied"));
    return label->isVisible() ? label->text() : QString();
}

QString EditorFixture::notice() const {
    const auto* const label = window->findChild<QLabel*>(QStringLiteral("lblNotice"));
    // Long words may be broken where this stands.
    return label && label->isVisible() ? label->text().remove(QChar(0x200B)) : QString();
}

void EditorFixture::type(const char* boxName, const QString& text) const {
    auto* const box = find<QLineEdit>(boxName);
    require(box->isEnabled() && !box->isReadOnly() && box->isVisible(),
            std::string(boxName) + " takes no input");
    box->setFocus();
    box->selectAll();
    QTest::keyClick(box, Qt::Key_Delete);
    QTest::keyClicks(box, text);
}

QSize EditorFixture::resizeToLetters(QSize usual) const {
    constexpr double usualLine = 14;
    window->resize(usual * (std::max(usualLine, 1.0 * window->fontMetrics().lineSpacing()) / usualLine));
    return window->size();
}

QTreeWidgetItem* EditorFixture::node(ItemTree& tree, const QString& key) const {
    for (QTreeWidgetItemIterator node(&tree); *node; ++node) {
        if (nodeKey(**node) == key)
            return *node;
    }
    throw std::logic_error("no node " + key.toStdString());
}

void EditorFixture::clickNode(const char* treeName, const char* key) const {
    auto* const tree = find<ItemTree>(treeName);
    require(tree->isEnabled() && tree->isVisible(), std::string(treeName) + " cannot be clicked");
    QTreeWidgetItem* const item = node(*tree, QString::fromLatin1(key));
    tree->scrollToItem(item);
    const QPoint place = tree->visualItemRect(item).intersected(tree->viewport()->rect()).center();
    bringIntoView(*tree->viewport(), place);
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, place);
}

void EditorFixture::showPage(const char* key) const {
    clickNode("trvSystem", key);
}

void EditorFixture::showVariable(const char* key) const {
    showPage("C3");
    clickNode("trvVar", key);
}

void EditorFixture::showMessage(const char* key) const {
    showPage("C4");
    clickNode("trvMsg", key);
}

} // namespace orvista::testing
