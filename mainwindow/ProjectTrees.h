#pragma once

#include "mainwindow/ItemTree.h"
#include "mainwindow/MainPage.h"

/// The trees of the main window. They are filled once and never change: the device has a fixed number of
/// variables and messages, and their names are fixed.
namespace orvista::ProjectTrees {

/// The root "Orvista" and a node for each page.
void fillNavigationTree(ItemTree& trvSystem, const std::vector<MainPage>& pages);
void fillMessageTree(ItemTree& trvMsg);
void fillVariableTree(ItemTree& trvVar);

} // namespace orvista::ProjectTrees
