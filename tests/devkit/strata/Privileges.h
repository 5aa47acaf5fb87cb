#pragma once

/// Gives up the rights that would let this process write what its user may not. False: it cannot.
bool DropPrivileges();
