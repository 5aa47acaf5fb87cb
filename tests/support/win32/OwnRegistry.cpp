#include "tests/support/OwnRegistry.h"

#include <QCoreApplication>

#include <windows.h>

#include <array>
#include <string>

namespace
{

struct Root
{
    HKEY predefined;
    const wchar_t* name;
    HKEY key = nullptr;
};

} // namespace

struct OwnRegistry::Implementation
{
    const std::wstring place =
        L"Software\\Norlane\\OwnRegistry" + std::to_wstring(QCoreApplication::applicationPid()) + L"\\";
    std::array<Root, 2> roots{{{HKEY_LOCAL_MACHINE, L"Machine"}, {HKEY_CURRENT_USER, L"User"}}};
};

// The keys are all there before the first root is replaced.
OwnRegistry::OwnRegistry() : m_implementation(std::make_unique<Implementation>())
{
    for (Root& root : m_implementation->roots)
    {
        const std::wstring path = m_implementation->place + root.name;
        RegCreateKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &root.key, nullptr);
    }
    for (const Root& root : m_implementation->roots)
        RegOverridePredefKey(root.predefined, root.key);
}

OwnRegistry::~OwnRegistry()
{
    for (const Root& root : m_implementation->roots)
    {
        RegOverridePredefKey(root.predefined, nullptr);
        RegCloseKey(root.key);
    }
    const std::wstring place = m_implementation->place.substr(0, m_implementation->place.size() - 1);
    RegDeleteTreeW(HKEY_CURRENT_USER, place.c_str());
}

void OwnRegistry::Set(const QString& key, const QString& name, const QVariant& value)
{
    const std::wstring path = key.toStdWString();
    const std::wstring valueName = name.toStdWString();
    const std::wstring text = value.toString().toStdWString();
    const DWORD number = value.toUInt();
    const bool isString = value.type() == QVariant::String;
    for (const Root& root : m_implementation->roots)
    {
        RegSetKeyValueW(root.key, path.c_str(), valueName.c_str(), isString ? REG_SZ : REG_DWORD,
                        isString ? static_cast<const void*>(text.c_str()) : &number,
                        isString ? static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)) : sizeof(number));
    }
}
