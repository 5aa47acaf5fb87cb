#pragma once

#include "handlers/Handler.h"
#include "logging/FunctionLog.h"

#include <string>

/// Links banking protection to the page: publishes its options, follows the machine's banking session with the flyer,
/// tells the service when the user ends the session, and clears the clipboard after it. UI thread only.
class SafeBankingHandler : public Handler
{
    Q_OBJECT

public:
    SafeBankingHandler(const std::shared_ptr<SystemSettings>& systemSettings,
                       const std::shared_ptr<UserSettings>& userSettings);
    ~SafeBankingHandler() override;

    /// Brings the flyer to the state of the session. False without a data peer.
    bool Initialize(IPlugInManager* manager);

    void Load();

    /// A session began or ended; the key is "initializing" at start-up.
    void BankingSessionStatusChanged(const std::wstring& key);

    void OpenFlyer();
    void OnBankingFlyerClosed();
    void ClearClipboard();

private:
    static const NotifyRule kNotifyRules[];

    void OnFlyerDetailsHidden();
    void OnSessionClosed();
    void PrepareDescription();
    void HideFlyerOnce();
    void SignalCloseEvent(const FunctionLog& log, const std::wstring& name);

    const std::weak_ptr<SystemSettings> m_systemSettings;
    const std::weak_ptr<UserSettings> m_userSettings;
    bool m_initializing = false; // until the page has echoed the initial state
    bool m_sessionOpen = false;  // as the flyer was last brought to
};
