#pragma once

#include <QObject>
#include <QString>

#include <functional>

namespace orvista {

class PanelDock;
struct Project;

/// Offers the address that a project was downloaded from for the System page, which has that of a new
/// project: monitor, tester and the next upload would otherwise go to another display.
class AddressOffer final : public QObject {
    Q_OBJECT
public:
    /// \param use types the address into its box on the System page
    AddressOffer(const Project& project, PanelDock& dock, std::function<void(const QString& address)> use,
                 QObject* parent);

    /// The open project came from there. An address that the System page has already is not offered.
    void offer(const QString& address);
    /// The project, or its address, may be another: an offer that is of no use any more goes.
    void follow();

private:
    QString ownAddress() const;

    const Project& project_;
    PanelDock& dock_;
    std::function<void(const QString&)> use_;
    QString offeredBeside_; ///< the System page's address while the offer stands
};

} // namespace orvista
