#include "bench/startup/EndAtFirstPaint.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDateTime>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QLocale>
#include <QMainWindow>
#include <QMenuBar>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QSplitter>
#include <QStatusBar>
#include <QTabWidget>
#include <QToolBar>
#include <QTreeWidget>
#include <QVBoxLayout>

/// The editor's window in straight code on Qt's own widgets: the same pages, boxes, nodes, entries, buttons,
/// pictures and tool-tips, without anything that the editor does with them. The preview is left out: it is to
/// cost nothing as long as another page is shown.
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

QPushButton* newButton(const char* caption, const char* toolTip) {
    auto* const button = new QPushButton(QString::fromLatin1(caption));
    button->setToolTip(QString::fromLatin1(toolTip));
    return button;
}

QHBoxLayout* buttonRow(std::initializer_list<std::pair<const char*, const char*>> buttons) {
    auto* const row = new QHBoxLayout;
    row->addStretch(1);
    for (const auto& [caption, toolTip] : buttons)
        row->addWidget(newButton(caption, toolTip));
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
    auto* const address = new QLineEdit(QStringLiteral("192.168.1.100"));
    address->setToolTip(QStringLiteral("The device's IP address"));
    rows->addRow(QStringLiteral("IP :"), address);
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
    for (const char* caption : {"Emergency Message Start Address (20 Continuous 0xxxx Coil Address)",
                                "Regular Message Start Address ( 40 Continuous 0xxxx Coil Address)",
                                "Float Variable Start Address (64 Continuous 4xxxx Register Address)",
                                "Boolean Variable Start Address (32 Continuous 0xxxx Boolean Address)"}) {
        auto* const frame = new QGroupBox(QString::fromLatin1(caption));
        auto* const row = new QHBoxLayout(frame);
        row->addWidget(new QLabel(QStringLiteral("Current Address:")));
        row->addWidget(shownOnly());
        row->addWidget(new QLabel(QStringLiteral("New Address:")));
        row->addWidget(new QLineEdit);
        layout->addWidget(frame);
    }
    layout->addLayout(
        buttonRow({{"Apply", "Store the new addresses in the project"},
                   {"Restore Default", "Store the addresses 300, 320, 100 and 100 in the project"}}));
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
    details->addLayout(buttonRow({{"Edit Variable", "Edit the shown variable in a dialog"},
                                  {"Apply", "Store the shown settings in the project"}}));
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
    details->addLayout(
        buttonRow({{"Message Wizard", "Compose a page of the message and add it to the script"},
                   {"Apply", "Store the script in the project"}}));
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
    row->addWidget(newButton("Update", "Switch the messages as ticked"));
    layout->addLayout(row);
    auto* const grid = new QGridLayout;
    for (int index = 0; index < count; ++index) {
        auto* const box = new QCheckBox(QString::number(index + 1));
        box->setToolTip(caption + u' ' + box->text());
        grid->addWidget(box, index / 10, index % 10);
    }
    layout->addLayout(grid);
    return frame;
}

QWidget* valueFrame(const QString& caption, int firstAddress, int step, int count, QWidget* value) {
    auto* const frame = new QGroupBox(caption);
    auto* const row = new QHBoxLayout(frame);
    auto* const addresses = new QComboBox;
    addresses->setEditable(true);
    addresses->setCompleter(nullptr);
    for (int index = 0; index < count; ++index)
        addresses->addItem(QString::number(firstAddress + index * step));
    row->addWidget(new QLabel(QStringLiteral("Address:")));
    row->addWidget(addresses);
    row->addWidget(value);
    row->addWidget(newButton("Update", "Write the value"));
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

struct Entry {
    const char* caption;
    QKeySequence shortcut = {};
};

void addMenus(QMenuBar& bar) {
    const std::pair<const char*, std::vector<Entry>> menus[] = {
        {"&File",
         {{"&New", Qt::CTRL | Qt::Key_N},
          {"&Open", Qt::CTRL | Qt::Key_O},
          {"Save", Qt::CTRL | Qt::Key_S},
          {"Save as", Qt::CTRL | Qt::SHIFT | Qt::Key_S},
          {"Exit"}}},
        {"&Link", {{"Upload Project to Ulvo"}, {"Download Project from Ulvo"}}},
        {"&Option", {{"System"}, {"Modbus Setting"}, {"Variable List"}, {"Message List"}}},
        {"&View", {{"&Panels"}, {"Display Preview"}}},
        {"&Tools", {{"&Check Project", Qt::Key_F8}}},
        {"&Help", {{"Context", Qt::Key_F1}, {"About Quillmark"}}}};
    for (const auto& [caption, entries] : menus) {
        QMenu* const menu = bar.addMenu(QString::fromLatin1(caption));
        for (const Entry& entry : entries)
            menu->addAction(QString::fromLatin1(entry.caption))->setShortcut(entry.shortcut);
    }
}

/// Lines on a square of 24 dots.
QIcon drawnIcon(std::initializer_list<QPolygonF> lines) {
    QPixmap picture(24, 24);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Qt::black, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    for (const QPolygonF& line : lines)
        painter.drawPolyline(line);
    painter.end();
    return {picture};
}

void addTools(QToolBar& toolbar) {
    const QPolygonF tray({{3.5, 15}, {3.5, 20.5}, {20.5, 20.5}, {20.5, 15}});
    const QPolygonF arrow({{12, 3.5}, {12, 15.5}});
    const std::tuple<const char*, const char*, QIcon> tools[] = {
        {"New", "Create New Orvista Project",
         drawnIcon({QPolygonF({{13.5, 3}, {5, 3}, {5, 21}, {19, 21}, {19, 8.5}, {13.5, 3}}),
                    QPolygonF({{13.5, 3}, {13.5, 8.5}, {19, 8.5}}), QPolygonF({{12, 11.5}, {12, 17.5}}),
                    QPolygonF({{9, 14.5}, {15, 14.5}})})},
        {"Open", "Open Existing Orvista Project",
         drawnIcon({QPolygonF({{5, 19}, {3, 19}, {3, 5}, {9, 5}, {11, 7.5}, {18.5, 7.5}, {18.5, 11}}),
                    QPolygonF({{4, 19.5}, {6.5, 11}, {22, 11}, {19, 19.5}, {4, 19.5}})})},
        {"Save", "Save Current Orvista Project",
         drawnIcon({QPolygonF({{3.5, 3.5}, {16.5, 3.5}, {20.5, 7.5}, {20.5, 20.5}, {3.5, 20.5}, {3.5, 3.5}}),
                    QPolygonF({{7.5, 3.5}, {7.5, 9}, {15.5, 9}, {15.5, 3.5}}),
                    QPolygonF({{7, 20.5}, {7, 13.5}, {17, 13.5}, {17, 20.5}})})},
        {"Upload", "Upload Project Files",
         drawnIcon({tray, arrow, QPolygonF({{7, 8.5}, {12, 3.5}, {17, 8.5}})})},
        {"Download", "Download Project Files",
         drawnIcon({tray, arrow, QPolygonF({{7, 10.5}, {12, 15.5}, {17, 10.5}})})}};
    toolbar.setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    for (const auto& [caption, toolTip, icon] : tools)
        toolbar.addAction(icon, QString::fromLatin1(caption))->setToolTip(QString::fromLatin1(toolTip));
}

QWidget* scrolling(QWidget* page) {
    auto* const area = new QScrollArea;
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setWidget(page);
    area->viewport()->setAutoFillBackground(false);
    page->setAutoFillBackground(false);
    return area;
}

QWidget* framed(const QString& caption, QWidget* content) {
    auto* const frame = new QGroupBox(caption);
    auto* const layout = new QVBoxLayout(frame);
    layout->addWidget(content);
    return frame;
}

void build(QMainWindow& window) {
    addMenus(*window.menuBar());
    addTools(*window.addToolBar(QStringLiteral("Toolbar")));
    const QDateTime now = QDateTime::currentDateTime();
    for (const QString& panel :
         {QStringLiteral("LX-400D"), QLocale().toString(now.date(), QLocale::ShortFormat),
          QLocale().toString(now.time(), QLocale::ShortFormat)})
        window.statusBar()->addPermanentWidget(new QLabel(panel));
    auto* const pages = new QTabWidget;
    pages->addTab(scrolling(systemPage()), QStringLiteral("System"));
    pages->addTab(scrolling(addressPage()), QStringLiteral("Modbus Setting"));
    pages->addTab(scrolling(variablePage()), QStringLiteral("Variable List"));
    pages->addTab(scrolling(messagePage()), QStringLiteral("Message List"));
    pages->addTab(scrolling(testerPage()), QStringLiteral("TCP Tester"));
    auto* const navigation = newTree();
    auto* const root = new QTreeWidgetItem(navigation, {QStringLiteral("Orvista")});
    for (const char* text : {"System", "Modbus Setting", "Variable List", "Message List", "Orvista Test"})
        new QTreeWidgetItem(root, {QString::fromLatin1(text)});
    root->setExpanded(true);
    pages->setEnabled(false); // until there is a project
    navigation->setEnabled(false);
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
