import { allowedHours, everyHour, noHour, type Slots } from "../logic/WeekGrid";
import { attempt } from "../model/Notices";
import {
  canRedo, canUndo, changeLimits, discardLimits, hoursLocked, limits, limitsChanged, lockedDays, redoLimits, saveLimits,
  undoLimits, unlimitedHours,
} from "../model/TimeLimits";
import { variable } from "../model/Variables";
import { Button } from "../parts/Button";
import { Icon } from "../parts/Icon";
import { Card, Page, SaveBar } from "../parts/Page";
import { WeekGrid } from "../parts/WeekGrid";
import { counted, fill, text } from "../text/Text";

const status = variable<string>("@TimeLimit\\Data:time_limit_status");

/// All hours of the days that may be changed.
function paintAll(slots: Slots): void {
  const days = lockedDays.value.map((locked, day) => (locked ? limits.value.slots : slots).slice(day * 24, day * 24 + 24));
  changeLimits({ slots: days.join("") });
}

function HoursPerDay() {
  const t = text.value.time;
  const hours = Math.min(limits.value.hours, unlimitedHours);
  const words = hours >= unlimitedHours ? t.unlimited : counted(t.hours, hours);
  return (
    <Card title={t.hoursPerDay}>
      <p class="faint" id="hours-lead">{t.hoursLead}</p>
      <div class="slider">
        <input
          type="range"
          min={0}
          max={unlimitedHours}
          step={1}
          value={hours}
          disabled={hoursLocked.value}
          aria-label={t.hoursPerDay}
          aria-valuetext={words}
          aria-describedby="hours-lead"
          onInput={(event) => changeLimits({ hours: event.currentTarget.valueAsNumber })}
        />
        <output>{words}</output>
      </div>
    </Card>
  );
}

export function TimeLimitsPage() {
  const t = text.value;
  const locked = lockedDays.value.some(Boolean) || hoursLocked.value;
  return (
    <Page title={t.routes["time-limits"]} lead={t.time.lead}>
      {status.value === "Off" && <p class="note">{t.time.off}</p>}
      {locked && (
        <p class="note">
          <Icon name="lock" />
          {t.time.locked}
        </p>
      )}
      <Card title={t.time.grid}>
        <div class="tools">
          <Button disabled={!canUndo.value} onPress={undoLimits}>{t.undo}</Button>
          <Button disabled={!canRedo.value} onPress={redoLimits}>{t.redo}</Button>
          <Button onPress={() => paintAll(everyHour)}>{t.time.allowAll}</Button>
          <Button onPress={() => paintAll(noHour)}>{t.time.denyAll}</Button>
        </div>
        <WeekGrid
          slots={limits.value.slots}
          locked={lockedDays.value}
          onPaint={(slots) => changeLimits({ slots })}
          onUndo={undoLimits}
          onRedo={redoLimits}
        />
        <div class="legend">
          <span>
            <i class="patch allowed" />
            {t.time.allowed}
          </span>
          <span>
            <i class="patch denied" />
            {t.time.denied}
          </span>
          <span class="faint">{fill(t.time.total, allowedHours(limits.value.slots))}</span>
        </div>
        <p class="faint">{t.time.help}</p>
      </Card>
      <HoursPerDay />
      {limitsChanged.value && <SaveBar onSave={() => attempt(saveLimits)} onDiscard={discardLimits} />}
    </Page>
  );
}
