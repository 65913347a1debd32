#pragma once

#include <QStringList>

class QCommandLineParser;

/// A program's command line, read before there is an application: what needs no window needs no display.
namespace orvista {

/// The arguments as they were given, the program's name first, as shownPath() shows paths: those that are
/// not text come back by pathFromShown(). The options that Qt takes itself ("-platform" and the like) are
/// left out.
QStringList programArguments(int argumentCount, char** arguments);

/// Lets the parser read them. Answers help, the version and mistakes at once, which ends the program.
void processBeforeStart(QCommandLineParser& parser, int argumentCount, char** arguments);

} // namespace orvista
