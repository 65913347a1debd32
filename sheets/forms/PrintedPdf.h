#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <string>

namespace orvista {

/// The body of a page of HTML, such as addressHtmlBody(), as it is printed: A4 across, the heads of tables
/// repeated, each page with its number. \param body UTF-8; its pictures are in it \param title of the
/// document \param step is called before each page; where it throws, the work ends
QByteArray printedPdf(
    const std::string& body, const QString& title, const std::function<void()>& step = [] {});

} // namespace orvista
