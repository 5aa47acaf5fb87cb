#pragma once

#include <string_view>

namespace StrataCli
{

constexpr std::string_view HelpText = R"(strata: reads and writes the settings store.

  strata get KEY                     prints a value
  strata set KEY VALUE [--type TYPE] writes a value ("-": from standard input)
  strata list [PREFIX]               prints every entry whose key begins so
  strata remove KEY                  removes a value and its constraints
  strata constrain KEY WORD          sets the constraints: enforced, none or a number
  strata watch [PREFIX]              prints changes as they happen, until Ctrl-C
  strata export [FILE]               writes a scope as JSON
  strata import FILE                 writes every entry of an export, or none of them
  strata seed [FILE]                 the same, but keeps values that are there;
                                     without FILE the defaults of all settings

  --scope system|user|SID   whose settings (user)
  --type TYPE               bool, int32, int64, string, utf8 or object. Without it
                            the type that the key has; for a new key true and false
                            are bool, integers int32 or int64, {...} and [...]
                            object, anything else string
  --data DIR                the folder that holds store.db (the file named by the
                            environment variable ORB_STRATA_STORE, else the
                            development host's folder)
  --json                    prints entries as JSON: type, value, constraints
  --help                    prints this

A FILE "-" is standard input or output. What follows -- is no option.

Ends with 0 when done, 1 if the store or a file could not be read or written,
2 if the command line makes no sense, 3 if there is no such value, 4 if a value
or a file is not well-formed.
)";

} // namespace StrataCli
