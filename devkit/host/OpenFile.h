#pragma once

#include <QString>

/// Hands a file to the program that the desktop has for its kind. False: none was started.
bool OpenFile(const QString& path);
