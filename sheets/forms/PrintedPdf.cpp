#include "sheets/forms/PrintedPdf.h"

#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>
#include <QTextDocument>

namespace orvista {

namespace {

constexpr int dotsPerInch = 300;
constexpr qreal marginMillimetres = 12;
constexpr int fontPoints = 7;
/// Lines below the rows only: Qt takes six times as long to lay out a table whose borders collapse.
constexpr const char* style =
    "h1 { font-size: 14pt } h2 { font-size: 10pt }"
    "th { background: #ddd; text-align: left } th, td { border-bottom: 1px solid #aaa }"
    "td { white-space: pre-wrap }";

/// What a style sheet cannot say to Qt's tables.
QString printable(const std::string& body) {
    return QString::fromStdString(body).replace(
        QLatin1String("<table>"),
        QLatin1String("<table width=\"100%\" cellspacing=\"0\" cellpadding=\"2\">"));
}

void paintPage(QPainter& painter, QTextDocument& document, int page, QSizeF body) {
    painter.save();
    painter.translate(0, -page * body.height());
    QAbstractTextDocumentLayout::PaintContext context;
    context.clip = QRectF({0, page * body.height()}, body);
    // The paper is white, whatever the program's own colours are.
    context.palette.setColor(QPalette::Text, Qt::black);
    painter.setClipRect(context.clip);
    document.documentLayout()->draw(&painter, context);
    painter.restore();
}

} // namespace

QByteArray printedPdf(const std::string& body, const QString& title, const std::function<void()>& step) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setTitle(title);
    writer.setCreator(QStringLiteral("Orvista Message Editor"));
    writer.setResolution(dotsPerInch);
    writer.setPageLayout(
        QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Landscape,
                    {marginMillimetres, marginMillimetres, marginMillimetres, marginMillimetres},
                    QPageLayout::Millimeter));

    QPainter painter(&writer);
    painter.setRenderHint(QPainter::LosslessImageRendering);
    QFont font(QStringLiteral("sans-serif"));
    font.setPointSize(fontPoints);
    painter.setFont(font);
    const int footer = 2 * painter.fontMetrics().lineSpacing();
    const QSizeF page(writer.width(), writer.height() - footer);
    QTextDocument document;
    document.documentLayout()->setPaintDevice(&writer);
    document.setDocumentMargin(0);
    document.setDefaultFont(font);
    document.setDefaultStyleSheet(QString::fromLatin1(style));
    document.setHtml(printable(body));
    document.setPageSize(page);
    for (int number = 0; number < document.pageCount(); ++number) {
        step();
        if (number > 0)
            writer.newPage();
        paintPage(painter, document, number, page);
        painter.drawText(QRectF(0, page.height(), page.width(), footer), Qt::AlignRight | Qt::AlignBottom,
                         QStringLiteral("%1 / %2").arg(number + 1).arg(document.pageCount()));
    }
    painter.end();
    return bytes;
}

} // namespace orvista
