#pragma once

#include "tests/support/StoreTest.h"

#include <map>
#include <set>
#include <string>
#include <vector>

/// What a store held in the course of a day on which nothing failed, and so what it may hold at all: each key one of
/// its values, and lists of websites any of the websites that were on them, and at least those that always were.
class StoreHistory
{
public:
    using Entries = StoreTest::Entries;

    void Add(const std::string& sid, const Entries& entries);

    /// What should not be there, or is not there and should, as "key: what is there".
    std::vector<std::string> WrongIn(const std::string& sid, const Entries& entries) const;

private:
    struct Past
    {
        std::set<std::string> values;
        std::set<std::uint32_t> constraints;
        std::set<std::string> elements;       // of a list: which were there at any time
        std::set<std::string> steadyElements; // and which at every time
        int times = 0;
    };

    static std::string StringOf(const StoreTest::Stored& entry);
    static std::set<std::string> ElementsOf(const StoreTest::Stored& entry);
    static bool IsList(const std::wstring& key);
    static bool MayHold(const Past& past, const std::wstring& key, const StoreTest::Stored& entry);

    std::map<std::string, std::map<std::wstring, Past>> m_scopes;
    std::map<std::string, int> m_times;
};
