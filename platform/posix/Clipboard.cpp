#include "platform/Clipboard.h"

#include <QClipboard>
#include <QGuiApplication>

#include <cerrno>

namespace Platform
{

namespace
{

class ApplicationClipboard : public Clipboard
{
public:
    bool Open() override
    {
        const bool hasOne = qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr;
        if (!hasOne)
            errno = ENOTSUP;
        return hasOne;
    }
    void Empty() override { QGuiApplication::clipboard()->clear(); }
    void Close() override {}
};

} // namespace

template <>
Clipboard& System<Clipboard>()
{
    return Detail::NoDestructor<ApplicationClipboard>();
}

} // namespace Platform
