#pragma once

#include "tools/tour/Stage.h"

#include <QObject>

namespace orvista::tour {

/// A project is filled: messages from the wizard, variables, addresses; then saved and opened again.
class EditingTour final : public QObject {
    Q_OBJECT
public:
    EditingTour(Stage& stage, const QString& bitmap) : stage_(stage), bitmap_(bitmap) {}

private slots:
    void startsAnotherProject();
    void composesAPageWithTwoFields();
    void looksAtThePreview();
    void composesAPageWithABitmap();
    void checksTheProject();
    void editsAFloatVariable();
    void editsABooleanVariable();
    void movesTheAddressMap();
    void savesIt();
    void opensItAgain();

private:
    void offersFixes();
    QString folder() const { return stage_.projectFolder("station"); }

    Stage& stage_;
    QString bitmap_;
};

} // namespace orvista::tour
