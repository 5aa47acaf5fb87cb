import { connection } from "../connection/Connection";
import { attempt, tellFailed } from "../model/Notices";
import { addressOf } from "../model/Route";
import { changing, settingsPages, withSettings } from "../model/Rights";
import { keptBusy, lastError } from "../model/Saving";
import { changeSetting, isEnforced } from "../model/Settings";
import { setVariable, variable } from "../model/Variables";
import { Facts, type Fact } from "../parts/Facts";
import { Icon } from "../parts/Icon";
import { Card, Page } from "../parts/Page";
import { Switch } from "../parts/Switch";
import { duration, fill, text } from "../text/Text";

interface Feature {
  name: "browsing" | "banking" | "webFilter" | "timeLimit" | "safeSearch";
  state: string;
  key: string;
  /// The plug-in itself saves a user's switch; a machine's switch it only shows, and the suite saves it.
  scope: "system" | "user";
}

const group = "windows.browsing_protection.";
const browsing = "@BrowsingProtection\\Data:browsing_protection_state";
const banking = "@SafeBanking\\Data:banking_protection_state";
const webFilter = "@ContentControl\\Data:current_user_web_page_filter_switch_state";
const timeLimit = "@TimeLimit\\Data:time_limit_state";
const safeSearch = "@SafeSearch\\Data:safe_search_state";
const features: readonly Feature[] = [
  { name: "browsing", state: browsing, scope: "system", key: `${group}enabled` },
  { name: "banking", state: banking, scope: "system", key: `${group}banking_protection.enabled` },
  { name: "webFilter", state: webFilter, scope: "user", key: "common.content.enabled" },
  { name: "timeLimit", state: timeLimit, scope: "user", key: "common.time.enabled" },
  { name: "safeSearch", state: safeSearch, scope: "user", key: `${group}search_result_filter.enabled` },
];

const status = (name: string) => variable<string>(`@ContentControl\\Status:${name}`);
const mainStatus = status("main_status");
const subStatus = status("sub_status");
const extensionDisabled = variable<boolean>("@ContentControl\\Status:browser_extension_disabled");
const browserType = variable<number>("@ContentControl\\Status:default_browser_type");
const minutesRemaining = variable<number | string>("@TimeLimit\\Data:minutes_remaining");

/// A switch settles when the plug-in answers "On" or "Off".
async function move({ name, state, scope, key }: Feature, on: boolean): Promise<void> {
  const settled = on ? "On" : "Off";
  const before = await lastError();
  const opened = await withSettings(settingsPages.settings, async () => {
    await setVariable(state, `Move${settled}`);
    if (scope === "system") await changeSetting(scope, key, "bool", on);
    else await connection.request("settle", {});
  });
  const t = text.value;
  if (!opened) tellFailed(t.refused);
  else if (variable(state).value !== settled)
    tellFailed((await keptBusy(before)) ? t.busy : fill(t.main.didNotMove, t.main.switches[name][0]!));
}

function FeatureSwitch({ feature }: { feature: Feature }) {
  const [label, lead] = text.value.main.switches[feature.name];
  return (
    <Switch
      label={label!}
      lead={lead}
      on={["On", "MoveOn"].includes(variable<string>(feature.state).value ?? "")}
      locked={isEnforced(feature.scope, feature.key)}
      busy={changing.value}
      onMove={(on) => attempt(() => move(feature, on))}
    />
  );
}

function Status() {
  const t = text.value.main;
  const known = mainStatus.value;
  const good = known === "UsersProtected";
  return (
    <section class={`status ${known === undefined ? "" : good ? "good" : "bad"}`} role="status">
      <span class="status-sign"><Icon name={good ? "check" : "warning"} /></span>
      <div>
        <h2>{known === undefined ? t.unknown : good ? t.protected : t.notProtected}</h2>
        <p>{t.reasons[subStatus.value as keyof typeof t.reasons] ?? ""}</p>
      </div>
    </section>
  );
}

export function MainPage() {
  const t = text.value;
  const minutes = minutesRemaining.value;
  const left = typeof minutes === "number" ? duration(minutes) : t.main.unlimited;
  const browser: Fact[] = [
    extensionDisabled.value
      ? { name: t.main.extension, value: t.main.extensionDisabled, tone: "bad" }
      : { name: t.main.extension, value: t.main.extensionEnabled },
    { name: t.main.defaultBrowser, value: browserType.value ?? "–" },
  ];
  return (
    <Page title={t.routes.main}>
      <Status />
      <Card title={t.main.protection} class="rows">
        {features.map((feature) => <FeatureSwitch key={feature.name} feature={feature} />)}
      </Card>
      <div class="columns">
        <Card title={t.main.browser}><Facts facts={browser} /></Card>
        <Card title={t.main.today}>
          <Facts facts={[{ name: t.main.minutesLeft, value: left }]} />
          <a class="more" href={addressOf("family-rules")}>{t.family.lead}</a>
        </Card>
      </div>
    </Page>
  );
}
