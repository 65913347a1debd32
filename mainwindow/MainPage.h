#pragma once

#include <functional>

class QWidget;

namespace orvista {

/// A page of the main window: its tab, its node in the navigation tree, and its entry in the Option menu.
struct MainPage {
    const char* title; ///< of the tab and of the entry
    const char* nodeKey;
    const char* nodeText;
    const char* help; ///< its page of the help
    QWidget* widget;
    const char* entry = nullptr;          ///< null for the page without one
    std::function<void()> show = nullptr; ///< what the entry does
};

} // namespace orvista
