#pragma once

#include "display/BitmapProvider.h"
#include "display/FolderBitmaps.h"
#include "display/forms/PreviewSetting.h"
#include "model/Project.h"

#include <QWidget>

#include <cstddef>
#include <optional>
#include <string_view>

namespace orvista {

class PanelView;

/// A page of a message, and what it is drawn from.
struct PictureSource {
    const Project& project; ///< whose variables are shown
    const BitmapProvider& bitmaps;
    std::string_view script;
    std::size_t line; ///< from 1; its page is shown, or the one nearest to it
};

/// Two panels side by side: how the page of a line looks before and after a change.
class BeforeAfterPictures final : public QWidget {
    Q_OBJECT
public:
    struct Captions {
        QString before;
        QString after;
    };
    /// \param setting asked whenever something is shown
    BeforeAfterPictures(const Captions& captions, PreviewSettingSource setting, QWidget* parent = nullptr);

    /// The pages in which the first line lies that differs, with the bitmaps of the project's folder. Places
    /// of a master are filled as the setting says. \param project always the same
    void showChange(const Project& project, std::string_view before, std::string_view after);
    void showPages(const PictureSource& before, const PictureSource& after);
    /// There is no page to be shown: takes the panels away, and leaves their place.
    void showNothing();

private:
    PanelView* addPanel(const QString& name, const QString& caption);
    static void draw(PanelView& panel, const PictureSource& source, const PreviewSetting& setting);
    QList<QWidget*> parts() const;
    void setShown(bool shown);

    PreviewSettingSource setting_;
    std::optional<FolderBitmaps> bitmaps_; ///< for showChange()
    PanelView* panelBefore;
    PanelView* panelAfter;
};

} // namespace orvista
