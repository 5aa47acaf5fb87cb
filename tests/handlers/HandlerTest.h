#pragma once

#include "handlers/MainGuiHandler.h"
#include "tests/support/LogCapture.h"
#include "tests/support/RecordingHost.h"
#include "tests/support/StoreTest.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QTimerEvent>

#include <algorithm>
#include <string>
#include <vector>

/// Handlers on a real store, with the host in the test's hands.
class HandlerTest : public StoreTest
{
protected:
    static constexpr const char* kLoadData = "@Veridan\\Settings\\Triggers:load_data";
    static constexpr const char* kSave = "@Veridan\\Settings\\Triggers:save";
    static constexpr const char* kDeclined = "StrataSettings::ScopedSettings<class VdnSettings>::ScopedSettings: "
                                             "Failed with error 5, strata handle not available";

    /// Writes every key with its default, so that a save writes only what was changed.
    void Seed()
    {
        for (const char* sid : {kSystem, kUser})
        {
            ElevatedSettings seed(nullptr, sid, kSettingsClientId, true);
            seed.WritableSettings().MarkChanged();
            ASSERT_TRUE(seed.Save());
        }
        TakeWrites();
    }

    /// Creates and initialises the main page's handler; what it did so far is forgotten.
    void StartMainGui()
    {
        m_system->Load();
        m_mainGui = std::make_shared<MainGuiHandler>(m_system, m_user);
        ASSERT_TRUE(m_mainGui->Initialize(&m_host));
        m_host.Forget();
    }

    /// The page asks for the settings; nothing that this writes counts.
    void OpenSettings()
    {
        m_host.PageFires("@Veridan\\Settings\\Triggers:request_show_settings_ui");
        ASSERT_NE(nullptr, m_mainGui->Elevated());
        m_mainGui->Elevated()->Save();
        m_host.Forget();
        TakeWrites();
    }

    /// As if the interval of the object's timer, which has to run and to be so long, had passed.
    static void Elapse(QObject* object, int milliseconds)
    {
        const auto timers = QAbstractEventDispatcher::instance()->registeredTimers(object);
        ASSERT_EQ(1, timers.size());
        EXPECT_EQ(milliseconds, timers[0].interval);
        QTimerEvent event(timers[0].timerId);
        QCoreApplication::sendEvent(object, &event);
    }

    std::vector<std::wstring> WrittenKeys()
    {
        std::vector<std::wstring> keys;
        for (const WrittenKey& write : TakeWrites())
            keys.push_back(write.key);
        std::sort(keys.begin(), keys.end());
        return keys;
    }

    RecordingHost m_host;
    std::shared_ptr<SystemSettings> m_system = std::make_shared<SystemSettings>(nullptr, kSettingsClientId);
    std::shared_ptr<UserSettings> m_user = std::make_shared<UserSettings>(kUser, m_system, false);
    std::shared_ptr<MainGuiHandler> m_mainGui;
};
