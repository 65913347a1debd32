#pragma once

#include "tests/support/EditorFixture.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QTest>
#include <QWidget>

namespace orvista::testing {

/// The mouse of somebody whose clicks are counted.
class CountedMouse {
public:
    explicit CountedMouse(const EditorFixture& editor) : editor_(editor) {}

    int clicks = 0;

    void click(QWidget* widget, QPoint at = {5, 5}) {
        ++clicks;
        QTest::mouseClick(widget, Qt::LeftButton, {}, at);
    }
    void click(const char* button) { click(editor_.find<QWidget>(button)); }
    void doubleClick(QWidget* widget, QPoint at) {
        clicks += 2;
        QTest::mouseDClick(widget, Qt::LeftButton, {}, at);
    }
    void choose(const char* menu, const char* entry) {
        auto* const opened = editor_.find<QMenu>(menu);
        QMenuBar* const bar = editor_.window->menuBar();
        click(bar, bar->actionGeometry(opened->menuAction()).center());
        QTRY_VERIFY(opened->isVisible());
        click(opened, opened->actionGeometry(editor_.find<QAction>(entry)).center());
    }

private:
    const EditorFixture& editor_;
};

} // namespace orvista::testing
