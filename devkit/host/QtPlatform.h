#pragma once

/// Which of Qt's platforms the host runs on: one that needs no display, or on Windows the system's own, as the
/// clipboard that the plug-in empties is the system's there.
const char* QtPlatform();
