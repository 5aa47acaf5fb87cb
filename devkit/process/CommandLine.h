#pragma once

#include <QStringList>

#include <optional>

/// The words behind the program's name. Nothing: one of them is not text in this system's encoding.
std::optional<QStringList> CommandLine(int argc, char** argv);
