#pragma once

#include "devkit/core/CommandTable.h"

#include <QStringList>

/// Requests as a person writes them: the op, its arguments in the order of the parameters, options anywhere.
namespace Words
{

/// A line cut at blanks. `starts` says where each word begins, so that a value at the end of the line may hold blanks.
struct Line
{
    QString text;
    QStringList words;
    std::vector<int> starts; // empty for words that came apart, as a program's arguments do

    static Line FromString(const QString& text);
    static Line FromWords(const QStringList& words) { return {{}, words, {}}; }
};

/// The command that the line begins with ("store set …" and "store.set …" alike), and how many words name it.
struct Named
{
    const Command* command = nullptr;
    int words = 0;
};
Named Find(const CommandTable& table, const QStringList& words);

/// The request that the words from `first` on make of the command. An error says how it is written.
Result<QVariantMap> ToRequest(const Command& command, const Line& line, int first);

} // namespace Words
