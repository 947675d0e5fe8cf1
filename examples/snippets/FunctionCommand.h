#ifndef SNIPPETS_FUNCTIONCOMMAND_H
#define SNIPPETS_FUNCTIONCOMMAND_H

#include <commands/Command.h>
#include <commands/CommandData.h>

#include <QString>

#include <functional>
#include <utility>

//! [command]
// A record with a title.
class TitledData : public CommandData
{
public:
    explicit TitledData(const QString &title)
        : CommandData(QString(), false)
        , title(title)
    {
    }
    QString getDescription() const override { return title; }
    QString getTitle() const override { return title; }
    QString getTypeName() const override { return QStringLiteral("function"); }

private:
    const QString title;
};

// A command that calls a function.
class FunctionCommand : public Command
{
public:
    FunctionCommand(CommandData *data, std::function<void(Command &)> work)
        : Command(data)
        , work(std::move(work))
    {
    }
    bool canBeStarted() const override { return true; }

protected:
    void handleExecute() override { work(*this); }

private:
    const std::function<void(Command &)> work;
};
//! [command]

#endif
