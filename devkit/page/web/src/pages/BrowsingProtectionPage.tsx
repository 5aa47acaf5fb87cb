import { attempt, tellFailed } from "../model/Notices";
import { changing, settingsPages, withSettings } from "../model/Rights";
import { changeSetting } from "../model/Settings";
import { fire, variable } from "../model/Variables";
import { Card, Page } from "../parts/Page";
import { Switch } from "../parts/Switch";
import { text } from "../text/Text";

const options = [
  { name: "suspicious", id: "suspicious_sites_protection", key: "windows.browsing_protection.block_suspicious_websites" },
  { name: "illegal", id: "illegal_sites_protection", key: "windows.browsing_protection.block_illegal_websites" },
  {
    name: "ratings",
    id: "show_searchengines_rating",
    key: "windows.browsing_protection.show_link_reputations_on_search_results",
  },
] as const;

/// Options that the plug-in shows and the suite itself saves.
export async function saveOption(scope: "system" | "user", key: string, on: boolean): Promise<void> {
  const opened = await withSettings(settingsPages.settings, () => changeSetting(scope, key, "bool", on));
  if (!opened) tellFailed(text.value.refused);
  else await fire("@Veridan\\Settings\\Triggers:load_data");
}

export function BrowsingProtectionPage() {
  const t = text.value.browsing;
  return (
    <Page title={text.value.routes["browsing-protection"]} lead={t.lead}>
      <Card class="rows">
        {options.map(({ name, id, key }) => (
          <Switch
            key={id}
            label={t.options[name][0]!}
            lead={t.options[name][1]}
            on={variable<boolean>(`@BrowsingProtection\\Data:${id}`).value === true}
            locked={variable<boolean>(`@BrowsingProtection\\Data:${id}_readonly`).value === true}
            busy={changing.value}
            onMove={(on) => attempt(() => saveOption("system", key, on))}
          />
        ))}
      </Card>
      <Card class="line">
        <p>{t.storeLead}</p>
        <button
          type="button"
          class="button"
          onClick={() => attempt(() => fire("@Veridan\\Settings\\Triggers:open_chrome_web_store"))}
        >
          {t.store}
        </button>
      </Card>
    </Page>
  );
}
