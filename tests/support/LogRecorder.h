#ifndef TARNWICK_TESTS_SUPPORT_LOGRECORDER_H
#define TARNWICK_TESTS_SUPPORT_LOGRECORDER_H

#include <QStringList>

/** Records Qt's messages while it is alive; one at a time, on one thread. */
class LogRecorder
{
public:
    LogRecorder()
        : previous(qInstallMessageHandler(&LogRecorder::record))
    {
        lines.clear();
    }

    ~LogRecorder() { qInstallMessageHandler(previous); }

    Q_DISABLE_COPY_MOVE(LogRecorder)

    /** The lines so far, each "<QtMsgType as number> <category> <text>", after "(with place) " if it has a context. */
    static QStringList getLines() { return lines; }

private:
    static void record(QtMsgType type, const QMessageLogContext &context, const QString &text)
    {
        const bool hasPlace = context.file != nullptr || context.line != 0 || context.function != nullptr;
        lines.append((hasPlace ? QStringLiteral("(with place) ") : QString()) + QString::number(type) + u' '
            + QString::fromUtf8(context.category) + u' ' + text);
    }

    static inline QStringList lines;
    const QtMessageHandler previous;
};

#endif
