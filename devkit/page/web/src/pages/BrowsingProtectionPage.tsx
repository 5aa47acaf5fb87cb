import { fire, variable } from "../model/Variables";
import { Button } from "../parts/Button";
import { OptionSwitches } from "../parts/OptionSwitches";
import { Card, Page } from "../parts/Page";
import { text } from "../text/Text";

const group = "windows.browsing_protection.";
const options = [
  { name: "suspicious", id: "suspicious_sites_protection", key: `${group}block_suspicious_websites` },
  { name: "illegal", id: "illegal_sites_protection", key: `${group}block_illegal_websites` },
  { name: "ratings", id: "show_searchengines_rating", key: `${group}show_link_reputations_on_search_results` },
] as const;
const data = (id: string) => variable<boolean>(`@BrowsingProtection\\Data:${id}`).value === true;

export function BrowsingProtectionPage() {
  const t = text.value.browsing;
  const shown = options.map(
    ({ name, id, key }) =>
      ({ texts: t.options[name], scope: "system", key, on: data(id), locked: data(`${id}_readonly`) }) as const,
  );
  return (
    <Page title={text.value.routes["browsing-protection"]} lead={t.lead}>
      <OptionSwitches options={shown} />
      <Card class="line">
        <p>{t.storeLead}</p>
        <Button onPress={() => fire("@Veridan\\Settings\\Triggers:open_chrome_web_store")}>{t.store}</Button>
      </Card>
    </Page>
  );
}
