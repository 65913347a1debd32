#pragma once

#include <QByteArray>
#include <QString>

#include <string>

namespace orvista {

/// addressHtmlBody() as it is printed: A4 across, the heads of tables repeated, each page with its number.
/// \param body UTF-8
/// \param title of the document
QByteArray addressPdf(const std::string& body, const QString& title);

} // namespace orvista
