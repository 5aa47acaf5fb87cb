#include "devkit/host/QtPlatform.h"

const char* QtPlatform()
{
    return "windows";
}
