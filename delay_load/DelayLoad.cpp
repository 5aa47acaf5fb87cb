#include "delay_load/DelayLoad.h"

#include "delay_load/NlFlyerApi.h"
#include "delay_load/OrbDpApi.h"
#include "delay_load/OrbStrataApi.h"
#include "platform/Ansi.h"
#include "platform/Path.h"
#include "platform/Registry.h"
#include "platform/SharedLibrary.h"
#include "text/Utf.h"

#include <algorithm>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace
{

using Platform::SharedLibrary;

constexpr const wchar_t* kLibrariesKey = L"Software\\Norlane\\ORB\\Delay Loading";
constexpr const wchar_t* kDependenciesKey = L"Software\\Norlane\\ORB\\Delay Loading\\NLDelayLoadDependencies";

/// One for all libraries, as they may depend on each other.
std::mutex g_lock;

std::wstring PathOfLibrary(const std::wstring& fileName)
{
    auto path = Platform::Get<Platform::Registry>().ReadString(Platform::RegistryRoot::Machine, kLibrariesKey,
                                                               fileName.c_str());
    if (path)
        return *std::move(path);
    const auto here = reinterpret_cast<const void*>(&PathOfLibrary);
    return Platform::JoinPath(Platform::ParentFolder(SharedLibrary::PathOf(here)), fileName);
}

/// Without the blanks around it.
std::wstring_view WithoutBlanks(std::wstring_view text)
{
    constexpr const wchar_t* kBlanks = L" \t";
    const auto begin = text.find_first_not_of(kBlanks);
    return begin == std::wstring_view::npos ? std::wstring_view()
                                            : text.substr(begin, text.find_last_not_of(kBlanks) + 1 - begin);
}

std::vector<std::wstring> DependenciesOf(const std::wstring& fileName)
{
    const auto list = Platform::Get<Platform::Registry>().ReadString(Platform::RegistryRoot::Machine, kDependenciesKey,
                                                                     fileName.c_str());
    std::vector<std::wstring> paths;
    std::wstring_view rest = list ? std::wstring_view(*list) : std::wstring_view();
    while (!rest.empty())
    {
        const auto length = std::min(rest.find(L';'), rest.size());
        const std::wstring_view path = WithoutBlanks(rest.substr(0, length));
        if (!path.empty())
            paths.emplace_back(path);
        rest.remove_prefix(std::min(length + 1, rest.size()));
    }
    return paths;
}

/// One of the suite's libraries: how often it is in use, and what is loaded for it. Trivially destructible, as the
/// objects live as long as the process.
template <class Table>
class SuiteLibrary
{
public:
    /// `resolve` fills a table from the library; it returns the name of a function that is missing, else null.
    using Resolve = const char* (*)(const SharedLibrary& library, Table& table);

    constexpr SuiteLibrary(const char* name, Table& table, Resolve resolve)
        : m_name(name), m_table(table), m_resolve(resolve)
    {}

    bool Acquire(DelayLoadError& error)
    {
        const std::lock_guard lock(g_lock);
        if (m_users == 0 && !Load(error))
            return false;
        ++m_users;
        return true;
    }

    void Release()
    {
        const std::lock_guard lock(g_lock);
        if (m_users != 0 && --m_users == 0)
        {
            m_table = UnloadedTable<Table>();
            Unload();
        }
    }

private:
    bool Load(DelayLoadError& error)
    {
        error.fileName = std::string(m_name) + SharedLibrary::Suffix();
        error.function = nullptr;
        std::uint32_t code = LoadFiles(error.fileName);
        if (code == 0)
        {
            Table table = UnloadedTable<Table>();
            error.function = m_resolve(m_files->back(), table);
            if (!error.function)
            {
                m_table = table;
                return true;
            }
            code = SharedLibrary::kErrorFunctionNotFound;
        }
        error.code = static_cast<std::int32_t>(code);
        Unload();
        return false;
    }

    /// The dependencies, and the library after them. Returns the first error, else 0; a dependency that fails takes the
    /// library's place in `fileName`.
    std::uint32_t LoadFiles(std::string& fileName)
    {
        const std::wstring name = Text::FromUtf8(fileName);
        std::vector<std::wstring> paths = DependenciesOf(name);
        paths.push_back(PathOfLibrary(name));
        m_files = new std::vector<SharedLibrary>(paths.size());
        for (std::size_t i = 0; i < paths.size(); ++i)
        {
            const std::uint32_t code = (*m_files)[i].Load(paths[i]);
            if (code == 0)
                continue;
            if (i + 1 < paths.size())
                fileName = Platform::ToAnsi(paths[i]);
            return code;
        }
        return 0;
    }

    void Unload()
    {
        while (!m_files->empty())
            m_files->pop_back();
        delete std::exchange(m_files, nullptr);
    }

    const char* const m_name;
    Table& m_table;
    const Resolve m_resolve;
    int m_users = 0;
    std::vector<SharedLibrary>* m_files = nullptr; // dependencies first
};

template <class Function>
bool Find(const SharedLibrary& library, const char* name, Function& function)
{
    function = reinterpret_cast<Function>(library.Find(name));
    return function != nullptr;
}

#define NL_RESOLVE(result, name, parameters)                                                                           \
    if (!Find(library, #name, table.name))                                                                             \
        return #name;

SuiteLibrary<OrbStrataTable> g_strataLibrary("nl_orb_strata_32", g_orbStrata,
                                             [](const SharedLibrary& library, OrbStrataTable& table) -> const char* {
                                                 NL_ORB_STRATA_FUNCTIONS(NL_RESOLVE)
                                                 return nullptr;
                                             });

SuiteLibrary<OrbDpTable> g_dpLibrary("nl_orb_datapipeline_api_32", g_orbDp,
                                     [](const SharedLibrary& library, OrbDpTable& table) -> const char* {
                                         NL_ORB_DP_API_FUNCTIONS(NL_RESOLVE)
                                         return nullptr;
                                     });

SuiteLibrary<NlFlyerTable> g_flyerLibrary("nl_flyer_api_32", g_nlFlyer,
                                          [](const SharedLibrary& library, NlFlyerTable& table) -> const char* {
                                              NL_FLYER_FUNCTIONS(NL_RESOLVE)
                                              return nullptr;
                                          });

} // namespace

bool OrbStrata_DelayLoadInitialize(int, DelayLoadError* error)
{
    return g_strataLibrary.Acquire(*error);
}

bool OrbDpApi_DelayLoadInitialize(int, DelayLoadError* error)
{
    return g_dpLibrary.Acquire(*error);
}

bool NlFlyerApiDelayLoadInitialize(int, DelayLoadError* error)
{
    return g_flyerLibrary.Acquire(*error);
}

void OrbStrata_DelayLoadUninitialize()
{
    g_strataLibrary.Release();
}

void OrbDpApi_DelayLoadUninitialize()
{
    g_dpLibrary.Release();
}

void NlFlyerApiDelayLoadUninitialize()
{
    g_flyerLibrary.Release();
}
