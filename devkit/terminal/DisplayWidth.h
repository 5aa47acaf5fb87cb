#pragma once

#include <QString>

/// The columns that one character as a reader sees it (a grapheme cluster) takes on a terminal: 0, 1 or 2.
int DisplayWidth(const QString& character);
