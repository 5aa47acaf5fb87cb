#pragma once

#include <QString>

/// The SID of the user that this process runs as, whose settings the plug-in shows; empty when the system does not
/// tell.
QString UserSid();
