#pragma once

#include "devkit/core/CommandTable.h"

class StoreAccess;

/// The commands on the store itself, which every front end and the store's own command line have.
std::vector<Command> StoreCommands(StoreAccess& store);

/// Makes of the word that was typed as the value of a "store.set" request a value, and says its type, where none was
/// given: the one that the key has, else the one that the word looks like. True in `isNew`: the key had none.
Answer CompleteStoreSet(StoreAccess& store, QVariantMap& request, bool& isNew);
