#pragma once

#include "tools/tour/Stage.h"

#include <QObject>

namespace orvista::tour {

/// A project's life: made, looked at, saved, found again after a restart, saved under another name.
class ProjectTour final : public QObject {
    Q_OBJECT
public:
    explicit ProjectTour(Stage& stage) : stage_(stage) {}

private slots:
    void createsAProject();
    void walksTheFivePages();
    void savesIt();
    void findsItAgainAfterARestart();
    void savesItUnderAnotherName();

private:
    Stage& stage_;
};

} // namespace orvista::tour
