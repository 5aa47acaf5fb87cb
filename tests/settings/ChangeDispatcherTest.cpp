#include "settings/binding/ChangeDispatcher.h"
#include "settings/binding/Property.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QThread>

#include <cstring>
#include <new>
#include <thread>

using namespace StrataSettings;
using testing::ElementsAre;

namespace
{

class ChangeDispatcherTest : public testing::Test
{
protected:
    ChangeDispatcher::Registration Record(const wchar_t* key)
    {
        return m_dispatcher.Subscribe(
            key,
            [this](const std::wstring& changed) {
                m_told.push_back(changed);
                m_thread = QThread::currentThread();
            });
    }

    void TellFromAnotherThread(const std::vector<const PropertyBase*>& properties)
    {
        std::thread([&] {
            for (const PropertyBase* property : properties)
                m_dispatcher.OnPropertyChanged(*property);
        }).join();
        QCoreApplication::sendPostedEvents();
    }

    Property<bool> m_a{nullptr, L"a", false};
    Property<bool> m_b{nullptr, L"b", false};
    ChangeDispatcher m_dispatcher;
    std::vector<std::wstring> m_told;
    const QThread* m_thread = nullptr;
};

} // namespace

TEST_F(ChangeDispatcherTest, ChangesReachTheirSubscribersOnTheDispatchersThread)
{
    const auto a = Record(L"a");
    const auto b = Record(L"b");
    TellFromAnotherThread({&m_b, &m_a, &m_b});
    EXPECT_THAT(m_told, ElementsAre(L"b", L"a"));
    EXPECT_EQ(QThread::currentThread(), m_thread);
    TellFromAnotherThread({&m_b});
    EXPECT_THAT(m_told, ElementsAre(L"b", L"a", L"b"));
}

TEST_F(ChangeDispatcherTest, ADestroyedRegistrationIsNotTold)
{
    auto a = Record(L"a");
    EXPECT_TRUE(a);
    a = {};
    EXPECT_FALSE(a);
    TellFromAnotherThread({&m_a});
    EXPECT_TRUE(m_told.empty());
}

TEST_F(ChangeDispatcherTest, ACallbackMayEndItsOwnSubscriptionAndAnother)
{
    ChangeDispatcher::Registration other;
    ChangeDispatcher::Registration self;
    int calls = 0;
    self = m_dispatcher.Subscribe(L"a", [&](const std::wstring&) {
        ++calls;
        self = {};
        other = {};
    });
    other = Record(L"a");
    TellFromAnotherThread({&m_a});
    TellFromAnotherThread({&m_a});
    EXPECT_EQ(1, calls);
    EXPECT_TRUE(m_told.empty());
}

TEST_F(ChangeDispatcherTest, ACallbackMayDestroyTheDispatcher)
{
    alignas(ChangeDispatcher) unsigned char memory[sizeof(ChangeDispatcher)];
    auto* const dispatcher = ::new (memory) ChangeDispatcher;
    int calls = 0;
    const auto end = [&](const std::wstring&) {
        ++calls;
        dispatcher->~ChangeDispatcher();
        std::memset(memory, 0xFF, sizeof(memory)); // nothing of it may be looked at any more
    };
    std::vector<ChangeDispatcher::Registration> registrations;
    for (const wchar_t* key : {L"a", L"a", L"b"})
        registrations.push_back(dispatcher->Subscribe(key, end));
    dispatcher->OnPropertyChanged(m_a);
    dispatcher->OnPropertyChanged(m_b);
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(1, calls);
}

TEST_F(ChangeDispatcherTest, ARegistrationMayOutliveItsDispatcher)
{
    ChangeDispatcher::Registration registration;
    {
        ChangeDispatcher dispatcher;
        registration = dispatcher.Subscribe(L"a", [](const std::wstring&) {});
        dispatcher.OnPropertyChanged(m_a); // is waiting when the dispatcher goes
    }
    QCoreApplication::sendPostedEvents();
    EXPECT_FALSE(registration);
}
