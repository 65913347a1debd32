#include "tools/help-pictures/HelpScripts.h"

#include <QRegularExpression>
#include <QStringList>

namespace orvista::help {

namespace {

/// The pages are ASCII: what else scripts hold stands there as one of these.
std::string plainText(QString text) {
    text.replace(QStringLiteral("&lt;"), QStringLiteral("<"));
    text.replace(QStringLiteral("&gt;"), QStringLiteral(">"));
    text.replace(QStringLiteral("&quot;"), QStringLiteral("\""));
    text.replace(QStringLiteral("&amp;"), QStringLiteral("&"));
    return text.toStdString();
}

std::vector<std::int64_t> numbers(const QString& words) {
    std::vector<std::int64_t> values;
    for (const QString& word : words.split(u' ', Qt::SkipEmptyParts))
        values.push_back(word.toLongLong());
    return values;
}

} // namespace

std::vector<HelpScript> scriptsOfPage(const QString& html) {
    static const QRegularExpression markup(
        QStringLiteral(
            "<!-- shown after ([0-9 ]+) ms -->\\s*<pre class=\"script\" id=\"script-([a-z-]+)\">(.*?)</pre>"),
        QRegularExpression::DotMatchesEverythingOption);
    std::vector<HelpScript> scripts;
    for (auto found = markup.globalMatch(html); found.hasNext();) {
        const QRegularExpressionMatch match = found.next();
        scripts.push_back({match.captured(2), plainText(match.captured(3)), numbers(match.captured(1))});
    }
    return scripts;
}

} // namespace orvista::help
