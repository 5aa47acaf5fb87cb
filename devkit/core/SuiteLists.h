#pragma once

#include <QVariantList>

/// What the suite's libraries have been asked for, as the protocol shows it.
namespace SuiteLists
{

/// {"id", "title", "description", "buttons": [{"caption", "action"}], "state"}
QVariantList Flyers();
/// {"code", "name", "payload"?, "major"}
QVariantList Metrics();

} // namespace SuiteLists
