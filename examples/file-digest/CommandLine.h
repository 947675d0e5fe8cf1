#ifndef FILEDIGEST_COMMANDLINE_H
#define FILEDIGEST_COMMANDLINE_H

#include <optional>

class QCommandLineParser;
class QString;

/** The exit code if something cannot be read or written. */
constexpr int failure = 1;

/** The exit code for a command line that the program does not understand. */
constexpr int usageFailure = 2;

/** Prints the name of the application and @p message to standard error. */
void printError(const QString &message);

/**
 * Parses the arguments of the application, with the options --help and --version added. Prints the answer to these two
 * or a message about an unknown option, and returns the exit code of the process then; otherwise nothing.
 */
std::optional<int> processCommandLine(QCommandLineParser &parser);

#endif
