import { bankingFlyer, endSession } from "../model/Banking";
import { isEnforced } from "../model/Settings";
import { variable } from "../model/Variables";
import { Button } from "../parts/Button";
import { OptionSwitches, type Option } from "../parts/OptionSwitches";
import { Card, Page } from "../parts/Page";
import { text } from "../text/Text";

const group = "windows.browsing_protection.banking_protection.";

function option(texts: readonly string[], id: string, key: string): Option {
  const on = variable<boolean>(`@SafeBanking\\Data:${id}`).value === true;
  return { texts, scope: "system", key: group + key, on, locked: isEnforced("system", group + key) };
}

export function BankingProtectionPage() {
  const t = text.value.banking;
  const open = bankingFlyer.value !== "closed";
  const options = [
    option(t.options.enable, "banking_feature_enable", "activated"),
    option(t.options.connections, "no_connection_cut", "allow_all_internet_connections"),
    // The page says "keep" where the setting says "clear".
    { ...option(t.options.clipboard, "no_clipboard_clear", "clear_clipboard_after_banking_session"), inverted: true },
  ];
  return (
    <Page title={text.value.routes["banking-protection"]} lead={t.lead}>
      <Card title={t.session} class="line">
        <p>{open ? t.open : t.none}</p>
        {open && <Button onPress={endSession}>{t.end}</Button>}
      </Card>
      <OptionSwitches options={options} />
    </Page>
  );
}
