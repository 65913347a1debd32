#pragma once

#include "tools/tour/Stage.h"

#include <QObject>

namespace orvista::tour {

/// Project files that come from elsewhere: one is changed on the disk, one is dropped on the window.
class FilesTour final : public QObject {
    Q_OBJECT
public:
    explicit FilesTour(Stage& stage) : stage_(stage) {}

private slots:
    void noticesThatTheFileWasChanged();
    void readsItAgain();
    void opensADroppedProject();

private:
    QString station() const { return stage_.projectFolder(QStringLiteral("station")) + "/STATION.orx"; }

    Stage& stage_;
    int boxHeight_ = 0; ///< of the script's box, with nothing below the page
};

} // namespace orvista::tour
