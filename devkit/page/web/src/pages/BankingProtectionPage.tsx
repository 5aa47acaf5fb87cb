import { bankingFlyer, endSession } from "../model/Banking";
import { attempt } from "../model/Notices";
import { changing } from "../model/Rights";
import { isEnforced } from "../model/Settings";
import { variable } from "../model/Variables";
import { Card, Page } from "../parts/Page";
import { Switch } from "../parts/Switch";
import { text } from "../text/Text";
import { saveOption } from "./BrowsingProtectionPage";

const group = "windows.browsing_protection.banking_protection.";

interface Option {
  name: "enable" | "connections" | "clipboard";
  id: string;
  key: string;
  /// The page says "keep" where the setting says "clear".
  inverted?: true;
}

const options: readonly Option[] = [
  { name: "enable", id: "banking_feature_enable", key: `${group}activated` },
  { name: "connections", id: "no_connection_cut", key: `${group}allow_all_internet_connections` },
  { name: "clipboard", id: "no_clipboard_clear", key: `${group}clear_clipboard_after_banking_session`, inverted: true },
];

export function BankingProtectionPage() {
  const t = text.value.banking;
  const open = bankingFlyer.value !== "closed";
  return (
    <Page title={text.value.routes["banking-protection"]} lead={t.lead}>
      <Card title={t.session} class="line">
        <p>{open ? t.open : t.none}</p>
        {open && (
          <button type="button" class="button" onClick={() => attempt(endSession)}>
            {t.end}
          </button>
        )}
      </Card>
      <Card class="rows">
        {options.map(({ name, id, key, inverted }) => (
          <Switch
            key={id}
            label={t.options[name][0]!}
            lead={t.options[name][1]}
            on={variable<boolean>(`@SafeBanking\\Data:${id}`).value === true}
            locked={isEnforced("system", key)}
            busy={changing.value}
            onMove={(on) => attempt(() => saveOption("system", key, inverted ? !on : on))}
          />
        ))}
      </Card>
    </Page>
  );
}
