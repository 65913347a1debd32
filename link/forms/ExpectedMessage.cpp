#include "link/forms/ExpectedMessage.h"

#include "display/FolderBitmaps.h"
#include "items/HeldValues.h"
#include "widgets/FormParts.h"
#include "widgets/PanelView.h"

#include <QLabel>
#include <QVBoxLayout>

#include <utility>

namespace orvista {

namespace {

/// As often as the eye wants it of things that move.
constexpr int expectedFrameMilliseconds = 40;

} // namespace

ExpectedMessage::ExpectedMessage(const Project& project, int columns, std::function<LocalTime()> localTime,
                                 QWidget* parent)
    : QWidget(parent),
      project_(project),
      columns_(columns),
      localTime_(std::move(localTime)),
      player_(Programme({columns}, fieldFormats(project))),
      lblAcceptMessage(named<QLabel>(QStringLiteral("lblAcceptMessage"))),
      acceptPanel(named<PanelView>(QStringLiteral("acceptPanel"), LedRaster({columns}))) {
    lblAcceptMessage->setTextFormat(Qt::PlainText);
    lblAcceptMessage->setWordWrap(true);
    acceptPanel->setAccessibleName(tr("What the display should show"));
    // The picture shrinks before the table beside it has to.
    constexpr int smallestPicture = 20;
    acceptPanel->setMinimumWidth(smallestPicture * fontMetrics().averageCharWidth());
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(lblAcceptMessage);
    layout->addWidget(acceptPanel, 1);
    clock_.start();
    frames_.setInterval(expectedFrameMilliseconds);
    connect(&frames_, &QTimer::timeout, this, &ExpectedMessage::render);
}

void ExpectedMessage::show(std::optional<Item> message, const QString& caption) {
    lblAcceptMessage->setText(caption);
    if (message == message_)
        return;
    message_ = message;
    Programme programme({columns_}, fieldFormats(project_));
    if (message)
        programme.add(*message, scriptOf(project_, *message), FolderBitmaps(project_.ProjPath));
    player_ = MessagePlayer(std::move(programme));
    player_.play(clock_.elapsed());
    acceptPanel->setAccessibleDescription(message ? tr("On: %1").arg(QString::fromStdString(nameOf(*message)))
                                                  : tr("Dark: no message is on"));
    if (message)
        frames_.start();
    else
        frames_.stop();
    render();
}

void ExpectedMessage::render() {
    player_.advance(clock_.elapsed());
    DisplayValues values = heldValues(items_);
    values.clock = localTime_();
    acceptPanel->showRaster(player_.raster(values));
}

} // namespace orvista
