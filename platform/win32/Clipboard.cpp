#include "platform/Clipboard.h"

#include "platform/win32/Win32.h"

namespace Platform
{

namespace
{

class WindowsClipboard : public Clipboard
{
public:
    bool Open() override { return ::OpenClipboard(nullptr) != FALSE; }
    void Empty() override { ::EmptyClipboard(); }
    void Close() override { ::CloseClipboard(); }
};

} // namespace

template <>
Clipboard& System<Clipboard>()
{
    return Detail::NoDestructor<WindowsClipboard>();
}

} // namespace Platform
