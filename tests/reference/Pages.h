#pragma once

#include "tests/reference/Exploration.h"

#include <QByteArray>

/// The reference pages, in Markdown.
namespace Pages
{

QByteArray UiVariables(const Findings& findings);
QByteArray SettingsTree(const Findings& findings);

} // namespace Pages
