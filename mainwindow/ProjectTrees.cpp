#include "mainwindow/ProjectTrees.h"

#include "model/Project.h"

#include <array>

namespace orvista::ProjectTrees {

namespace {

struct PageNode {
    const char* key;
    const char* text;
};

/// In page order.
constexpr std::array<PageNode, 5> pageNodes = {{{"C1", "System"},
                                                {"C2", "Modbus Setting"},
                                                {"C3", "Variable List"},
                                                {"C4", "Message List"},
                                                {"C5", "Orvista Test"}}};

/// A group with its numbered children: key letter and text, each followed by the number.
struct Group {
    const char* key;
    const char* text;
    const char* childKey;
    const char* childText;
    std::size_t count;
};

void addGroup(ItemTree& tree, const Group& group) {
    QTreeWidgetItem* const node =
        tree.addNode(nullptr, QString::fromLatin1(group.key), QString::fromLatin1(group.text));
    for (std::size_t number = 1; number <= group.count; ++number) {
        const QString digits = QString::number(number);
        tree.addNode(node, group.childKey + digits, group.childText + digits);
    }
    node->setExpanded(true);
}

} // namespace

void fillNavigationTree(ItemTree& trvSystem) {
    QTreeWidgetItem* const root =
        trvSystem.addNode(nullptr, QStringLiteral("ROOT"), QStringLiteral("Orvista"));
    for (const PageNode& page : pageNodes)
        trvSystem.addNode(root, QString::fromLatin1(page.key), QString::fromLatin1(page.text));
    root->setExpanded(true);
}

void fillMessageTree(ItemTree& trvMsg) {
    addGroup(trvMsg, {"REGULAR", "Regular Message", "R", "Regular", regularMessageCount});
    addGroup(trvMsg, {"EMERGENCY", "Emergency Message", "E", "Emergency", emergencyMessageCount});
}

void fillVariableTree(ItemTree& trvVar) {
    addGroup(trvVar, {"REGISTER", "Register (Float)", "F", floatVariableName, floatVariableCount});
    addGroup(trvVar, {"COIL", "Coil (Boolean)", "B", booleanVariableName, booleanVariableCount});
}

int pageOfNode(const QString& key) {
    for (std::size_t page = 0; page < pageNodes.size(); ++page) {
        if (key == QLatin1String(pageNodes[page].key))
            return static_cast<int>(page);
    }
    return -1;
}

} // namespace orvista::ProjectTrees
