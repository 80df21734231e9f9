#pragma once
#include <QString>
#include <QStringList>

// The command line arrives as a list; the start-up rules expect the one text that the classic
// platform passes. Switches are joined by one blank, each path absolute and in double quotes.
namespace CommandLine {

bool isSwitch(const QString& argument);
// `arguments` without the program name; relative paths are resolved against `workingDir`.
QString buildCommand(const QStringList& arguments, const QString& workingDir);

// --help / --version: the text to print, or empty when the program should start.
QString informationRequest(const QStringList& arguments);

} // namespace CommandLine
