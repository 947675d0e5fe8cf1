#ifndef FILEDIGEST_COMMANDLINE_H
#define FILEDIGEST_COMMANDLINE_H

class QCommandLineParser;

/** The exit code for a command line that the program does not understand. */
constexpr int usageFailure = 2;

/**
 * Parses the arguments of the application. Adds the options --help and --version, and ends the process for these two.
 * For an unknown option, prints a message and ends the process with usageFailure.
 */
void processCommandLine(QCommandLineParser &parser);

#endif
