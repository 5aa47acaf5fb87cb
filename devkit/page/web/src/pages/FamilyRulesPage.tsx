import { clockText, joined, minutesInDay } from "../logic/DayBand";
import { dayFacts, dayOutlook, extendedUntil, usedToday } from "../model/Day";
import { fire, variable } from "../model/Variables";
import { Button } from "../parts/Button";
import { Facts, type Fact } from "../parts/Facts";
import { Icon } from "../parts/Icon";
import { Card, Page } from "../parts/Page";
import { duration, fill, text } from "../text/Text";

const time = <Value extends string | number | boolean>(name: string) => variable<Value>(`@TimeLimit\\Data:${name}`);
const minutesRemaining = time<number | string>("minutes_remaining");
const shownPage = variable<boolean>("@BrowsingProtection\\Data:show_family_rules_page");
const adminWarning = variable<boolean>("@FamilyRules\\AdminWarning:enabled");
const contentEnabled = variable<boolean>("@ContentControl\\Data:enabled");
const searchEnabled = variable<boolean>("@ContentControl\\Data:search_result_filter_enabled");

const percent = (minutes: number) => `${(Math.min(minutes, minutesInDay) / minutesInDay) * 100}%`;

/// Why today ends as it does.
function reason(): string {
  const t = text.value.family.binding;
  const { binding, at } = dayOutlook.value;
  return fill(t[binding], clockText(at ?? 0));
}

function Band() {
  const t = text.value.family;
  const { now, today } = dayFacts.value;
  const { minutesLeft } = dayOutlook.value;
  const curfews = joined(today);
  const extension = extendedUntil.value;
  const words = curfews.map(({ from, until }) => `${t.curfew}: ${clockText(from)}–${clockText(until)}`).join("; ");
  return (
    <div class="band-box">
      <div class="band" role="img" aria-label={`${t.band}. ${words || t.noCurfew}. ${reason()}`}>
        {curfews.map(({ from, until }) => (
          <i key={from} class="curfew" style={{ left: percent(from), width: percent(until - from) }} />
        ))}
        {minutesLeft !== undefined && (
          <i class="left" style={{ left: percent(now), width: percent(Math.min(minutesLeft, minutesInDay - now)) }} />
        )}
        {extension !== undefined && (
          <i class="extension" style={{ left: percent(now), width: percent(Math.min(extension, minutesInDay) - now) }} />
        )}
        <i class="present" style={{ left: percent(now) }} />
      </div>
      <div class="scale" aria-hidden="true">
        {[0, 6, 12, 18, 24].map((hour) => <span key={hour}>{clockText(hour * 60)}</span>)}
      </div>
    </div>
  );
}

function Today() {
  const t = text.value;
  const left = minutesRemaining.value;
  const { allowance } = dayFacts.value;
  const { binding, minutesLeft } = dayOutlook.value;
  // The plug-in counts the allowance; bedtimes come on top of it, and so does what it has not looked at yet.
  const minutes = binding === "curfew" || binding === "bedtime" || typeof left !== "number" ? minutesLeft : left;
  const facts: Fact[] = [
    { name: t.family.allowance, value: allowance === undefined ? t.family.unlimited : duration(Math.round(allowance)) },
    { name: t.family.used, value: duration(Math.round(usedToday.value)) },
  ];
  if (extendedUntil.value !== undefined) facts.push({ name: t.family.extension, value: clockText(extendedUntil.value) });
  return (
    <Card title={t.family.today} class="today">
      <p class="left-today">
        <strong>
          {binding === "off" || typeof minutes !== "number"
            ? t.family.unlimited
            : minutes <= 0
              ? t.family.noneLeft
              : duration(Math.ceil(minutes))}
        </strong>
        <span class="faint">{t.family.left}</span>
      </p>
      <p>{reason()}</p>
      <Band />
      <Facts facts={facts} />
    </Card>
  );
}

/// The two kinds of days that the plug-in tells of.
function DayKind({ kind, title }: { kind: "weekday" | "weekend"; title: string }) {
  const t = text.value;
  const minutes = (time<number>(`${kind}_hours`).value ?? 0) * 60 + (time<number>(`${kind}_minutes`).value ?? 0);
  const clock = (name: string) => (time<string>(`bedtime_${kind}_${name}`).value ?? "").replace(/^(\d+:\d+):00$/, "$1");
  return (
    <div>
      <h3>{title}</h3>
      <p>
        {time<boolean>("quotas_enabled").value && minutes < minutesInDay
          ? fill(t.family.perDay, duration(minutes))
          : t.family.unlimited}
      </p>
      <p>{time<boolean>(`bedtime_${kind}_enabled`).value ? fill(t.family.bedtime, clock("start"), clock("stop")) : t.family.noBedtime}</p>
    </div>
  );
}

function Rules() {
  const t = text.value;
  const rule = (name: string, on: boolean | undefined): Fact =>
    on ? { name, value: t.on, tone: "good" } : { name, value: t.off, tone: "faint" };
  const rules = [
    rule(t.family.ruleNames.content, contentEnabled.value),
    rule(t.family.ruleNames.search, searchEnabled.value),
    rule(t.family.ruleNames.quotas, time<boolean>("quotas_enabled").value),
    rule(t.family.ruleNames.curfews, time<boolean>("curfews_enabled").value),
  ];
  return (
    <Card title={t.family.rules}>
      <Facts facts={rules} />
      <div class="columns">
        <DayKind kind="weekday" title={t.family.weekdays} />
        <DayKind kind="weekend" title={t.family.weekends} />
      </div>
    </Card>
  );
}

export function FamilyRulesPage() {
  const t = text.value;
  return (
    <Page title={t.routes["family-rules"]} lead={t.family.lead}>
      {adminWarning.value && (
        <p class="note warning">
          <Icon name="warning" />
          <span>
            {t.family.adminWarning}{" "}
            <Button quiet onPress={() => fire("@FamilyRules\\AdminWarning:LinkClicked")}>{t.family.adminLink}</Button>
          </span>
        </p>
      )}
      {shownPage.value === false && <p class="note">{t.family.notShown}</p>}
      <Today />
      <Rules />
    </Page>
  );
}
