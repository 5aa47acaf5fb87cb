#pragma once

#include "devkit/core/StoreAccess.h"

/// Entries as the command line prints them.
namespace EntryString
{

/// The value alone: a string as it is, anything else as in JSON.
QByteArray Plain(const StoreEntry& entry);
/// {"type":…,"value":…,"constraints":…}; without "value" where there is none.
QByteArray AsJson(const StoreEntry& entry);
/// "key = value  (type, constraints)" for people; one line.
QByteArray AsLine(const QString& key, const StoreEntry& entry);
/// A scope's entries as a JSON object by key, one entry a line; what "import" and "seed" read.
QByteArray Export(const StoreAccess::Entries& entries);

} // namespace EntryString
