#include <QApplication>
#include <QFontDatabase>
#include <QFontInfo>

#include <cstdio>
#include <cstdlib>

namespace {

/// What ctest takes for a test that could not be run.
constexpr int skipped = 77;

/// Qt takes the size of its letters from the desktop, and from no variable.
void takeSize() {
    const int points = qEnvironmentVariableIntValue("ORVISTA_TEST_POINTS");
    if (points <= 0)
        return;
    QFont font = QApplication::font();
    font.setPointSize(points);
    QApplication::setFont(font);
}

/// A run under another font must not pass because that font is missing.
void expectFixedFont() {
    const QString expected = qEnvironmentVariable("ORVISTA_EXPECTED_FIXED_FONT");
    if (expected.isEmpty())
        return;
    if (!QFontDatabase::hasFamily(expected)) {
        std::fprintf(stderr, "%s is not installed\n", qPrintable(expected));
        std::exit(skipped);
    }
    const QString used = QFontInfo(QFontDatabase::systemFont(QFontDatabase::FixedFont)).family();
    if (used == expected)
        return;
    std::fprintf(stderr, "the fixed font is %s, not %s\n", qPrintable(used), qPrintable(expected));
    std::exit(EXIT_FAILURE);
}

/// Before a window test makes its first window.
void takeFont() {
    if (!qobject_cast<QApplication*>(QCoreApplication::instance()))
        return;
    takeSize();
    expectFixedFont();
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(takeFont)
