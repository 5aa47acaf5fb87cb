#include "tests/faults/MainPage.h"

#include <gtest/gtest.h>

MainPage::MainPage(HostProcess& host) : m_host(host)
{
    m_host.Load();
    m_host.Trigger("@Veridan\\Settings\\Triggers:request_show_settings_ui");
    Move(!StoreHoldsOn());
    Move(!StoreHoldsOn());
}

void MainPage::Move(bool on)
{
    m_host.Set(kSwitch, on ? "MoveOn" : "MoveOff");
    m_host.Do("settle");
}

bool MainPage::ShowsOn()
{
    const QString shown = m_host.Get(kSwitch).toString();
    EXPECT_TRUE(shown == "On" || shown == "Off") << qUtf8Printable(shown);
    return shown == "On";
}

bool MainPage::StoreHoldsOn()
{
    return m_host.StoreGet("user", kKey)["value"].toBool();
}
