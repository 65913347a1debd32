#pragma once

#include <QObject>

#include <string>
#include <vector>

namespace orvista {

class PanelDock;
struct Project;

/// Offers to bring bitmaps along where messages have come from another folder: an upload sends only what lies
/// in the project's own.
class BitmapOffer final : public QObject {
    Q_OBJECT
public:
    BitmapOffer(const Project& project, PanelDock& dock, QObject* parent);

    /// The project's messages, or some of them, came from that folder (UTF-8). Where bitmaps stayed behind,
    /// the dock shows a line with a button that copies them. An offer that stands comes again after it, while
    /// bitmaps are missing.
    void offerFrom(const std::string& folder);
    /// There is another project.
    void withdraw();

signals:
    /// There are bitmaps in the project's folder that were not there before.
    void copied();

private:
    void offerLast();
    void copyFrom(const std::string& folder);

    const Project& project_;
    PanelDock& dock_;
    std::vector<std::string> folders_; ///< that may have missing bitmaps; the last one is offered
};

} // namespace orvista
