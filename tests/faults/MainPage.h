#pragma once

#include "tests/scenarios/HostProcess.h"

/// The web filter's switch on the main page of a host, and the setting behind it.
class MainPage
{
public:
    static constexpr const char* kSwitch = "@ContentControl\\Data:current_user_web_page_filter_switch_state";
    static constexpr const char* kKey = "common.content.enabled";

    /// Loads the plug-in and opens the settings; what that writes is written.
    explicit MainPage(HostProcess& host);

    void Move(bool on);
    bool ShowsOn();
    bool StoreHoldsOn();

private:
    HostProcess& m_host;
};
