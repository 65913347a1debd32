#include "bench/startup/EndAtFirstPaint.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSplitter>
#include <QStatusBar>
#include <QTabWidget>
#include <QToolBar>
#include <QTreeWidget>
#include <QVBoxLayout>

/// The editor's window in straight code on Qt's own widgets: the same pages, boxes, nodes, entries and
/// buttons, without anything that the editor does with them.
namespace {

void addGroup(QTreeWidget& tree, const QString& text, const QString& child, int count) {
    auto* const group = new QTreeWidgetItem(&tree, {text});
    for (int number = 1; number <= count; ++number)
        new QTreeWidgetItem(group, {child + QString::number(number)});
    group->setExpanded(true);
}

QTreeWidget* newTree() {
    auto* const tree = new QTreeWidget;
    tree->setHeaderHidden(true);
    tree->setUniformRowHeights(true);
    return tree;
}

QHBoxLayout* buttonRow(const QStringList& captions) {
    auto* const row = new QHBoxLayout;
    row->addStretch(1);
    for (const QString& caption : captions)
        row->addWidget(new QPushButton(caption));
    return row;
}

QLineEdit* shownOnly() {
    auto* const box = new QLineEdit;
    box->setReadOnly(true);
    return box;
}

QWidget* systemPage() {
    auto* const page = new QWidget;
    auto* const layout = new QVBoxLayout(page);
    auto* const name = new QFormLayout;
    name->addRow(QStringLiteral("Project Name"), shownOnly());
    layout->addLayout(name);
    auto* const communication = new QGroupBox(QStringLiteral("Communication Type"));
    auto* const rows = new QFormLayout(communication);
    rows->addRow(new QRadioButton(QStringLiteral("TCP/IP")), new QLabel(QStringLiteral("Use TCP/IP")));
    rows->addRow(QStringLiteral("IP :"), new QLineEdit);
    rows->addRow(QStringLiteral("Port"), shownOnly());
    layout->addWidget(communication);
    auto* const device = new QGroupBox(QStringLiteral("Device Setting"));
    auto* const deviceRows = new QFormLayout(device);
    deviceRows->addRow(QStringLiteral("Device Name"), shownOnly());
    layout->addWidget(device);
    layout->addStretch(1);
    return page;
}

QWidget* addressPage() {
    auto* const page = new QWidget;
    auto* const layout = new QVBoxLayout(page);
    for (const char* caption : {"Emergency Message Start Address", "Regular Message Start Address",
                                "Float Variable Start Address", "Boolean Variable Start Address"}) {
        auto* const frame = new QGroupBox(QString::fromLatin1(caption));
        auto* const row = new QHBoxLayout(frame);
        row->addWidget(new QLabel(QStringLiteral("Current Address:")));
        row->addWidget(shownOnly());
        row->addWidget(new QLabel(QStringLiteral("New Address:")));
        row->addWidget(new QLineEdit);
        layout->addWidget(frame);
    }
    layout->addLayout(buttonRow({QStringLiteral("Apply"), QStringLiteral("Restore Default")}));
    layout->addStretch(1);
    return page;
}

QWidget* besideTree(QTreeWidget* tree, QLayout* details) {
    auto* const splitter = new QSplitter;
    splitter->addWidget(tree);
    auto* const right = new QWidget;
    right->setLayout(details);
    splitter->addWidget(right);
    auto* const page = new QWidget;
    auto* const layout = new QVBoxLayout(page);
    layout->addWidget(splitter);
    return page;
}

QWidget* variablePage() {
    auto* const tree = newTree();
    addGroup(*tree, QStringLiteral("Register (Float)"), QStringLiteral("RegVar"), 64);
    addGroup(*tree, QStringLiteral("Coil (Boolean)"), QStringLiteral("CoilVar"), 32);
    auto* const details = new QVBoxLayout;
    auto* const form = new QFormLayout;
    for (const char* label : {"Variable Name:", "Variable address:", "Variable Type:", "Default value:",
                              "Width:", "Precision:", "\"ON\" message:", "\"OFF\" message"})
        form->addRow(QString::fromLatin1(label), shownOnly());
    details->addLayout(form);
    details->addLayout(buttonRow({QStringLiteral("Edit Variable"), QStringLiteral("Apply")}));
    details->addStretch(1);
    return besideTree(tree, details);
}

QWidget* messagePage() {
    auto* const tree = newTree();
    addGroup(*tree, QStringLiteral("Regular Message"), QStringLiteral("Regular"), 40);
    addGroup(*tree, QStringLiteral("Emergency Message"), QStringLiteral("Emergency"), 20);
    auto* const details = new QVBoxLayout;
    auto* const names = new QHBoxLayout;
    for (const char* label : {"Message Name:", "Message Serial:"}) {
        names->addWidget(new QLabel(QString::fromLatin1(label)));
        names->addWidget(shownOnly());
    }
    details->addLayout(names);
    details->addWidget(new QPlainTextEdit, 1);
    details->addLayout(buttonRow({QStringLiteral("Message Wizard"), QStringLiteral("Apply")}));
    auto* const page = besideTree(tree, details);
    (new QListWidget(page))->hide();
    (new QListWidget(page))->hide();
    return page;
}

QWidget* messageFrame(const QString& caption, int count) {
    auto* const frame = new QGroupBox(caption);
    auto* const layout = new QVBoxLayout(frame);
    auto* const row = new QHBoxLayout;
    row->addWidget(new QLabel(QStringLiteral("Start Address:")));
    row->addWidget(new QLineEdit);
    row->addWidget(new QPushButton(QStringLiteral("Update")));
    layout->addLayout(row);
    auto* const grid = new QGridLayout;
    for (int index = 0; index < count; ++index)
        grid->addWidget(new QCheckBox(QString::number(index + 1)), index / 10, index % 10);
    layout->addLayout(grid);
    return frame;
}

QWidget* valueFrame(const QString& caption, int firstAddress, int step, int count, QWidget* value) {
    auto* const frame = new QGroupBox(caption);
    auto* const row = new QHBoxLayout(frame);
    auto* const addresses = new QComboBox;
    for (int index = 0; index < count; ++index)
        addresses->addItem(QString::number(firstAddress + index * step));
    row->addWidget(new QLabel(QStringLiteral("Address:")));
    row->addWidget(addresses);
    row->addWidget(value);
    row->addWidget(new QPushButton(QStringLiteral("Update")));
    return frame;
}

QWidget* testerPage() {
    auto* const page = new QWidget;
    auto* const layout = new QVBoxLayout(page);
    auto* const address = new QHBoxLayout;
    address->addWidget(new QLabel(QStringLiteral("IP address")));
    address->addWidget(shownOnly());
    layout->addLayout(address);
    layout->addWidget(messageFrame(QStringLiteral("Emergency Messages"), 20));
    layout->addWidget(messageFrame(QStringLiteral("Regular Messages"), 40));
    auto* const values = new QHBoxLayout;
    values->addWidget(valueFrame(QStringLiteral("Coil"), 100, 1, 32, new QCheckBox(QStringLiteral("On"))));
    values->addWidget(valueFrame(QStringLiteral("Register"), 100, 2, 64, new QLineEdit));
    layout->addLayout(values);
    return page;
}

void addMenus(QMenuBar& bar) {
    const std::pair<const char*, QStringList> menus[] = {
        {"&File", {"&New", "&Open", "Save", "Save as", "Exit"}},
        {"&Link", {"Upload Project to Ulvo", "Download Project from Ulvo"}},
        {"&Option", {"System", "Modbus Setting", "Variable List", "Message List"}},
        {"&Help", {"Context", "About Quillmark"}}};
    for (const auto& [caption, entries] : menus) {
        QMenu* const menu = bar.addMenu(QString::fromLatin1(caption));
        for (const QString& entry : entries)
            menu->addAction(entry);
    }
}

QWidget* framed(const QString& caption, QWidget* content) {
    auto* const frame = new QGroupBox(caption);
    auto* const layout = new QVBoxLayout(frame);
    layout->addWidget(content);
    return frame;
}

void build(QMainWindow& window) {
    addMenus(*window.menuBar());
    auto* const toolbar = window.addToolBar(QStringLiteral("Toolbar"));
    toolbar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    for (const char* caption : {"New", "Open", "Save", "Upload", "Download"})
        toolbar->addAction(QString::fromLatin1(caption));
    for (const char* panel : {"LX-400D", "1/1/00", "00:00"})
        window.statusBar()->addPermanentWidget(new QLabel(QString::fromLatin1(panel)));
    auto* const pages = new QTabWidget;
    pages->addTab(systemPage(), QStringLiteral("System"));
    pages->addTab(addressPage(), QStringLiteral("Modbus Setting"));
    pages->addTab(variablePage(), QStringLiteral("Variable List"));
    pages->addTab(messagePage(), QStringLiteral("Message List"));
    pages->addTab(testerPage(), QStringLiteral("TCP Tester"));
    auto* const navigation = newTree();
    auto* const root = new QTreeWidgetItem(navigation, {QStringLiteral("Orvista")});
    for (const char* text : {"System", "Modbus Setting", "Variable List", "Message List", "Orvista Test"})
        new QTreeWidgetItem(root, {QString::fromLatin1(text)});
    root->setExpanded(true);
    auto* const splitter = new QSplitter;
    splitter->addWidget(framed(QStringLiteral("System information"), navigation));
    splitter->addWidget(framed(QStringLiteral("Details"), pages));
    splitter->setStretchFactor(1, 1);
    window.setCentralWidget(splitter);
    window.resize(1000, 700);
}

} // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QMainWindow window;
    build(window);
    const orvista::bench::EndAtFirstPaint end(window);
    window.show();
    return QApplication::exec();
}
