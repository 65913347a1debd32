#pragma once

#include "tools/tour/Stage.h"

#include <QObject>

namespace orvista::tour {

/// What was nearly lost: a script that was thrown away, an editor that ended, a bitmap that stayed behind.
class RecoveryTour final : public QObject {
    Q_OBJECT
public:
    explicit RecoveryTour(Stage& stage) : stage_(stage) {}

private slots:
    void bringsAScriptBackThatWasThrownAway();
    void endsWithoutSaving();
    void restoresTheUnsavedWork();
    void bringsTheBitmapAlong();

private:
    void startWithTheStation();
    QString recoveryFolder() const { return stage_.path(QStringLiteral("program/recovery")); }

    Stage& stage_;
};

} // namespace orvista::tour
