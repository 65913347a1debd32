#pragma once

#include <QString>
#include <QWidget>

#include <cstddef>
#include <cstdint>

class QHBoxLayout;
class QLabel;
class QSlider;
class QSpinBox;

namespace orvista {

class DisplaysList;
class ElidedLabel;
class MasterView;
class ShapeButton;
class ValuesList;

/// The controls under a preview: play, pages, time, columns, values, of a master the display whose values are
/// shown, and what does not fit.
class PreviewBar final : public QWidget {
    Q_OBJECT
public:
    static constexpr int minimumColumns = 32;
    static constexpr int maximumColumns = 512;
    static constexpr int usualColumns = 128;

    /// \param values a part of the row from now on
    explicit PreviewBar(ValuesList* values, QWidget* parent = nullptr);

    struct State {
        std::size_t page = 0; ///< from 0
        std::size_t pageCount = 0;
        std::int64_t time = 0; ///< of the round, in milliseconds
        std::int64_t duration = 0;
        bool isPlaying = false;
    };
    void show(const State& state);
    /// Says what of the page is not to be seen.
    void showFit(const QString& text);
    /// With the preview hidden nothing is said of its page, wherever the sentence stands.
    void setFitShown(bool shown);

    int columns() const;
    /// Beyond minimumColumns or maximumColumns the nearest of them counts.
    void setColumns(int columns);

    /// Where what does not fit is said of a master: beside its displays there is no room for it here.
    void setMasterFitRow(QHBoxLayout& row) { masterFitRow_ = &row; }
    /// Offers the displays of a master; nothing where the project is none.
    void showDisplays(const MasterView& view);

signals:
    void playPressed();
    void backPressed();
    void forwardPressed();
    void timeChosen(int milliseconds);
    void columnsChosen();
    void displayChosen(const QString& name);

private:
    void buildLayout();
    void showTime(const State& state);

    ShapeButton* btnPreviewPlay;
    ShapeButton* btnPreviewBack;
    QLabel* lblPreviewPage;
    ShapeButton* btnPreviewForward;
    QSlider* sldPreviewTime;
    QSpinBox* spnPreviewColumns;
    ValuesList* cboPreviewValues;
    DisplaysList* cboPreviewDisplay;
    ElidedLabel* lblPreviewFit;
    QHBoxLayout* row_;
    QHBoxLayout* masterFitRow_ = nullptr;
};

} // namespace orvista
