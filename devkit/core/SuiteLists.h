#pragma once

#include <QVariantList>
#include <QVariantMap>

/// What the suite's libraries have been asked for, as the protocol shows it.
namespace SuiteLists
{

/// {"id", "title", "description", "buttons": [{"caption", "action"}], "state"}
QVariantList Flyers();
/// {"code", "name", "payload"?, "major"}
QVariantList Metrics();
/// What is made to fail: {"library", "function"?, "key"?, "code", "count"}; without "function" any function of the
/// library, with count 0 until it is cleared.
QVariantList Faults();
/// The functions that can be made to fail, by library.
QVariantMap FailableFunctions();

} // namespace SuiteLists
