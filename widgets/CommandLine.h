#pragma once

#include <QStringList>

class QCommandLineParser;

/// A program's command line, read before there is an application: what needs no window needs no display.
namespace orvista {

/// The status of a program that does not understand its command line, as other programs of the system have
/// it.
inline constexpr int usageError = 2;

/// The arguments as they were given, the program's name first, as shownPath() shows paths: those that are
/// not text come back by pathFromShown(). The options that Qt takes itself ("-platform" and the like) are
/// left out.
QStringList programArguments(int argumentCount, char** arguments);

/// Lets the parser read them. Answers help, the version and mistakes at once, which ends the program, after a
/// mistake with usageError.
void processBeforeStart(QCommandLineParser& parser, int argumentCount, char** arguments);

} // namespace orvista
