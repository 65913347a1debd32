#include "widgets/CommandLine.h"

#include "widgets/PathText.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>

namespace orvista {

namespace {

/// Options of Qt and of its platforms that are followed by a value.
constexpr std::array valuedOptions = {"platform",      "platformpluginpath",
                                      "platformtheme", "plugin",
                                      "session",       "qwindowgeometry",
                                      "qwindowtitle",  "qwindowicon",
                                      "stylesheet",    "style",
                                      "qmljsdebugger", "display",
                                      "geometry",      "title",
                                      "icon",          "name",
                                      "visual"};
/// Those that stand alone.
constexpr std::array plainOptions = {"reverse", "widgetcount", "nograb", "dograb", "testability"};
/// Those whose value may follow after "=".
constexpr std::array joinedOptions = {"style=", "stylesheet=", "qmljsdebugger="};

/// How many arguments the option at the front of them takes; 0 when it is none of Qt's.
int argumentsOfQt(const QString& argument) {
    if (!argument.startsWith(u'-'))
        return 0;
    const QStringView name = QStringView(argument).sliced(argument.startsWith(QLatin1String("--")) ? 2 : 1);
    const auto isName = [name](const char* known) { return name == QLatin1String(known); };
    const auto startsIt = [name](const char* known) { return name.startsWith(QLatin1String(known)); };
    if (std::any_of(valuedOptions.begin(), valuedOptions.end(), isName))
        return 2;
    const bool standsAlone = std::any_of(plainOptions.begin(), plainOptions.end(), isName) ||
                             std::any_of(joinedOptions.begin(), joinedOptions.end(), startsIt);
    return standsAlone ? 1 : 0;
}

QStringList givenArguments(int argumentCount, char** arguments) {
#ifdef Q_OS_WIN
    // Only Qt knows the wide ones; those here are in the system's code page.
    const QCoreApplication asked(argumentCount, arguments);
    return QCoreApplication::arguments();
#else
    QStringList given;
    for (int i = 0; i < argumentCount; ++i)
        given += shownPath(arguments[i]);
    return given;
#endif
}

} // namespace

QStringList programArguments(int argumentCount, char** arguments) {
    const QStringList given = givenArguments(argumentCount, arguments);
    QStringList own = given.first(std::min<qsizetype>(1, given.size()));
    for (qsizetype i = 1; i < given.size();) {
        const int ofQt = argumentsOfQt(given[i]);
        if (ofQt == 0)
            own += given[i];
        i += std::max(1, ofQt);
    }
    return own;
}

void processBeforeStart(QCommandLineParser& parser, int argumentCount, char** arguments) {
    const QStringList own = programArguments(argumentCount, arguments);
    const bool isUnderstood = parser.parse(own);
    const auto isAsked = [&parser](const char* option) { return parser.isSet(QLatin1String(option)); };
    if (isUnderstood && !isAsked("help") && !isAsked("help-all") && !isAsked("version"))
        return;
    if (!isUnderstood) {
        std::fprintf(stderr, "%s: %s\n", qPrintable(QCoreApplication::applicationName()),
                     qPrintable(parser.errorText()));
        std::exit(usageError);
    }
    const QCoreApplication windowless(argumentCount, arguments); // tells the parser the program's name
    parser.process(own);
}

} // namespace orvista
