#pragma once

#include "tests/support/StoreTest.h"

#include <cstddef>

/// The store's functions, numbered in the order of their list.
enum class StoreFunction : std::size_t
{
#define NL_STORE_FUNCTION(result, name, parameters) k##name,
    NL_ORB_STRATA_FUNCTIONS(NL_STORE_FUNCTION)
#undef NL_STORE_FUNCTION
};

/// How one function fails: what it answers instead of doing its work.
struct StoreFault
{
    /// Where the function has a result, this is it, and a value is answered that nobody may use; a handle, an object or
    /// a text is null. With 0 the call claims that it succeeded, and yet answers null.
    OrbStrataResult code = ORB_STRATA_STORE_FAILED;

    /// The work is done, and only the answer says that it failed.
    bool carriedOut = false;

    int first = 1; ///< The first call that fails, counted from 1.
    int count = 0; ///< How many in a row; 0: all of them.
};

/// Lets calls of the store's functions fail as long as it lives, and counts them: those of the plug-in, not of handles
/// with the product's rights.
class FaultyStore
{
public:
    explicit FaultyStore(const StoreTest::StrataControl& control);
    ~FaultyStore();
    FaultyStore(const FaultyStore&) = delete;
    FaultyStore& operator=(const FaultyStore&) = delete;

    /// From now on the function fails so, beside others that do.
    void Fail(StoreFunction function, const StoreFault& fault);
    void Work(StoreFunction function);
    /// Everything works again, and is counted anew.
    void Work() { m_control.OrbStrataControl_ClearFaults(); }

    int Calls(StoreFunction function) const;
    bool HasFailed(StoreFunction function) const;

    struct Trait
    {
        const char* name;
        bool canFail;      // it answers something
        bool tellsResult;  // a result code, by its value or through a parameter
        bool isResult;     // what it answers is the result code
        bool givesPointer; // a handle, an object or a text
    };
    static const Trait& TraitOf(StoreFunction function);
    static std::size_t FunctionCount();

private:
    const StoreTest::StrataControl& m_control;
};
