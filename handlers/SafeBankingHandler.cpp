#include "handlers/SafeBankingHandler.h"

#include "handlers/Metrics.h"
#include "handlers/SharedVariables.h"
#include "platform/Clipboard.h"
#include "platform/LastError.h"
#include "platform/NamedEvents.h"
#include "util/Handle.h"

using namespace SharedVariables;

namespace
{

const VariableIdentifier kFeatureEnable("@SafeBanking\\Data:banking_feature_enable");
const VariableIdentifier kFeatureEnableReadOnly("@SafeBanking\\Data:banking_feature_enable_readonly");
const VariableIdentifier kNoConnectionCut("@SafeBanking\\Data:no_connection_cut");
const VariableIdentifier kNoConnectionCutReadOnly("@SafeBanking\\Data:no_connection_cut_readonly");
const VariableIdentifier kNoClipboardClear("@SafeBanking\\Data:no_clipboard_clear");
const VariableIdentifier kDescription("@SafeBanking\\Data:description");
const VariableIdentifier kBaseDescription("@SafeBanking\\Strings:description");
const VariableIdentifier kMoreInfoText("@SafeBanking\\Customizable\\Strings:more_info_text");
const VariableIdentifier kMoreInfoUrl("@SafeBanking\\Customizable\\Strings:more_info_url");
const VariableIdentifier kClearClipboard("@Product\\Customization:ClearClipboardAfterBanking");
const VariableIdentifier kCloseBankingSession("@SafeBanking\\Triggers:closeBankingSession");
const VariableIdentifier kHideFlyerDetails("@SafeBanking\\Triggers:hideFlyerDetails");
const VariableIdentifier kFlyerOpen("@SafeBanking\\Triggers:flyerOpen");
const VariableIdentifier kFlyerClose("@SafeBanking\\Triggers:flyerClose");
const VariableIdentifier kFlyerHide("@SafeBanking\\Triggers:flyerHide");

constexpr const wchar_t* kInitializing = L"initializing";

/// The description is prepared once in a process.
bool g_descriptionPrepared = false;

QString Link(const QString& text, const QString& url)
{
    return UiString("<a href=\"%1\">%2</a>").arg(url.toHtmlEscaped(), text.toHtmlEscaped());
}

} // namespace

const NotifyRule SafeBankingHandler::kNotifyRules[] = {
    {kLoadData, &SafeBankingHandler::Load},
    NotifyRule(kSave),
    {kHideFlyerDetails, &SafeBankingHandler::OnFlyerDetailsHidden},
    {kCloseBankingSession, &SafeBankingHandler::OnSessionClosed},
};

SafeBankingHandler::SafeBankingHandler(const std::shared_ptr<SystemSettings>& systemSettings,
                                       const std::shared_ptr<UserSettings>& userSettings)
    : Handler(L"SafeBankingHandler::OnNotify"), m_systemSettings(systemSettings), m_userSettings(userSettings)
{
    const EntryLog log(L"SafeBankingHandler::SafeBankingHandler");
    if (systemSettings)
        Follow(*systemSettings, systemSettings->Settings().internal.bankingSessionOpen,
               [this](const std::wstring& key) { BankingSessionStatusChanged(key); });
}

SafeBankingHandler::~SafeBankingHandler()
{
    const EntryLog log(L"SafeBankingHandler::~SafeBankingHandler");
}

bool SafeBankingHandler::Initialize(IPlugInManager* manager)
{
    const EntryLog log(L"SafeBankingHandler::Initialize");
    if (!m_variables.Obtain(log, manager))
        return false;
    m_variables.RegisterKept({kFeatureEnable, kFeatureEnableReadOnly});
    m_variables.Set(kFeatureEnable, true);
    m_variables.Set(kFeatureEnableReadOnly, false);
    m_variables.Register({kCloseBankingSession, kBaseDescription, kMoreInfoUrl, kMoreInfoText, kDescription,
                          kNoConnectionCut, kNoConnectionCutReadOnly, kNoClipboardClear, kClearClipboard});
    Follow(kNotifyRules);
    m_initializing = true;
    BankingSessionStatusChanged(kInitializing);
    return true;
}

void SafeBankingHandler::Load()
{
    const EntryLog log(L"SafeBankingHandler::Load");
    const auto system = m_systemSettings.lock();
    if (!system)
        return;
    const Settings::BankingProtection& settings = system->Settings().bankingProtection;
    m_variables.Set(kFeatureEnable, settings.activated.Get());
    m_variables.Set(kNoConnectionCut, settings.allowAllInternetConnections.Get());
    m_variables.Set(kFeatureEnableReadOnly, settings.activated.IsEnforced());
    m_variables.Set(kNoConnectionCutReadOnly, settings.allowAllInternetConnections.IsEnforced());
    m_variables.Set(kNoClipboardClear, !settings.clearClipboardAfterSession.Get());
}

void SafeBankingHandler::OnFlyerDetailsHidden()
{
    RecordMetricsEvent(FunctionLog(L"SafeBankingHandler::OnNotify"), "safe_banking_flyer_hidden");
}

void SafeBankingHandler::OnSessionClosed()
{
    if (!m_initializing)
        return OnBankingFlyerClosed();
    const FunctionLog log(L"SafeBankingHandler::OnNotify");
    LOG(log, 5, L"%s: Initializing banking state, not recording session close.");
    m_initializing = false;
}

void SafeBankingHandler::BankingSessionStatusChanged(const std::wstring& key)
{
    const EntryLog log(L"SafeBankingHandler::BankingSessionStatusChanged");
    const auto system = m_systemSettings.lock();
    if (!system || !m_variables)
        return;
    const bool open = system->Settings().internal.bankingSessionOpen.Get();
    if (key != kInitializing && open == m_sessionOpen)
        return; // told of something else, such as a new constraint
    m_sessionOpen = open;
    LOG(log, 5, L"%s: BankingSessionOpen changed to %d", open ? 1 : 0);
    if (open)
        return OpenFlyer();

    m_variables.Fire(kFlyerClose);
    if (key != kInitializing && m_variables.Get(kClearClipboard).toBool() &&
        system->Settings().bankingProtection.clearClipboardAfterSession.Get())
        ClearClipboard();
}

void SafeBankingHandler::ClearClipboard()
{
    const EntryLog log(L"SafeBankingHandler::ClearClipboard");
    Platform::Clipboard& clipboard = Platform::Get<Platform::Clipboard>();
    if (!clipboard.Open())
    {
        LOG(log, 2, L"%s: Cannot open clipboard, error %lu.", Platform::LastError());
        return;
    }
    clipboard.Empty();
    clipboard.Close();
    LOG(log, 5, L"%s: Clipboard cleaned.");
}

void SafeBankingHandler::OpenFlyer()
{
    const EntryLog log(L"SafeBankingHandler::OpenFlyer");
    PrepareDescription();
    m_variables.Fire(kFlyerOpen);
    HideFlyerOnce();
    RecordMetricsEvent(log, "safe_banking_flyer_activated");
}

void SafeBankingHandler::PrepareDescription()
{
    if (g_descriptionPrepared || !m_variables)
        return;
    const QVariant base = m_variables.Get(kBaseDescription);
    if (!base.isValid())
        return;
    g_descriptionPrepared = true;
    QString description = base.toString();
    const QString url = m_variables.Get(kMoreInfoUrl).toString();
    const QString text = m_variables.Get(kMoreInfoText).toString();
    if (!url.isEmpty() && !text.isEmpty())
        description += QLatin1Char(' ') + Link(text, url);
    m_variables.Set(kDescription, description);
}

/// Done once for a user: the setting is cleared with it.
void SafeBankingHandler::HideFlyerOnce()
{
    const auto user = m_userSettings.lock();
    if (!user || !user->Settings().internal.openBankingFlyerExpanded.Get())
        return;
    m_variables.Fire(kFlyerHide);
    user->WritableSettings().internal.openBankingFlyerExpanded.Set(false);
    user->RequestSave(user->CurrentSid());
}

void SafeBankingHandler::OnBankingFlyerClosed()
{
    const EntryLog log(L"SafeBankingHandler::OnBankingFlyerClosed");
    const auto system = m_systemSettings.lock();
    if (!system || !system->Settings().internal.bankingSessionOpen.Get())
    {
        LOG(log, 5, L"%s: Banking session closed by closing browser");
        RecordMetricsEvent(log, "safe_banking_closed_from_browser");
        return;
    }
    LOG(log, 5, L"%s: Banking session closed from flyer");
    if (const std::wstring event = system->Settings().internal.bankingCloseEvent.Get(); !event.empty())
        SignalCloseEvent(log, event);
    RecordMetricsEvent(log, "safe_banking_closed_from_flyer");
}

void SafeBankingHandler::SignalCloseEvent(const FunctionLog& log, const std::wstring& name)
{
    RAII::Handle event(Platform::Get<Platform::NamedEvents>().Open(name.c_str()));
    if (!event.Get())
        LOG(log, 2, L"%s: Unable to open event, error %lu", Platform::LastError());
    else
        event.Signal();
}
