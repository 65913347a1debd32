#include "mainwindow/ProjectTrees.h"

#include "model/Project.h"

namespace orvista::ProjectTrees {

namespace {

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

void fillNavigationTree(ItemTree& trvSystem, const std::vector<PageRow>& pages) {
    QTreeWidgetItem* const root =
        trvSystem.addNode(nullptr, QStringLiteral("ROOT"), QStringLiteral("Orvista"));
    for (const PageRow& page : pages)
        trvSystem.addNode(root, QString::fromLatin1(page.nodeKey), QString::fromLatin1(page.nodeText));
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

} // namespace orvista::ProjectTrees
