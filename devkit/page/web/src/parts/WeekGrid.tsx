import { useRef, useState } from "preact/hooks";
import {
  cellAfter, daysInWeek, hoursInDay, hourText, isAllowed, paint, paintLine, type Cell, type Slots,
} from "../logic/WeekGrid";
import { dayOfWeek, now } from "../model/Clock";
import { fill, text } from "../text/Text";

interface Props {
  slots: Slots;
  /// Days that are not to be changed, Monday first.
  locked: readonly boolean[];
  onPaint(slots: Slots): void;
  onUndo(): void;
  onRedo(): void;
}

/// From one cell to another in one colour, by pointer or keys.
interface Stroke {
  from: Cell;
  to: Cell;
  allowed: boolean;
}

const days = Array.from({ length: daysInWeek }, (_, day) => day);
const hours = Array.from({ length: hoursInDay }, (_, hour) => hour);
/// As in the style sheet: days side by side.
const uprightLayout = matchMedia("(max-width: 46rem)");

function cellOf(target: EventTarget | null): Cell | undefined {
  const cell = target instanceof Element ? target.closest<HTMLElement>("[data-day]") : null;
  return cell ? { day: Number(cell.dataset["day"]), hour: Number(cell.dataset["hour"]) } : undefined;
}

/// The day's name; Monday is 0.
function dayName(day: number, short = false): string {
  const t = text.value;
  return (short ? t.shortDays : t.days)[(day + 1) % daysInWeek]!;
}

/// The week's hours by the ARIA grid pattern: one tab stop, arrow keys move, the space bar changes an hour and Shift
/// paints on from there.
export function WeekGrid({ slots, locked, onPaint, onUndo, onRedo }: Props) {
  const t = text.value.time;
  const grid = useRef<HTMLDivElement>(null);
  const [stroke, setStroke] = useState<Stroke | undefined>(undefined);
  const [focused, setFocused] = useState<Cell>({ day: 0, hour: 0 });
  const anchor = useRef<{ cell: Cell; allowed: boolean; before: Slots } | undefined>(undefined);

  const unlock = (painted: Slots) =>
    days.map((day) => (locked[day] ? slots : painted).slice(day * hoursInDay, (day + 1) * hoursInDay)).join("");
  const shown = stroke ? unlock(paint(slots, stroke.from, stroke.to, stroke.allowed)) : slots;
  const finish = (painted: Slots) => {
    setStroke(undefined);
    onPaint(unlock(painted));
  };

  const focus = (cell: Cell) => {
    setFocused(cell);
    grid.current?.querySelector<HTMLElement>(`[data-day="${cell.day}"][data-hour="${cell.hour}"]`)?.focus();
  };
  const toggle = (cell: Cell) => {
    const allowed = !isAllowed(slots, cell);
    anchor.current = { cell, allowed, before: slots };
    finish(paint(slots, cell, cell, allowed));
  };
  const onKeyDown = (event: KeyboardEvent) => {
    const at = cellOf(event.target);
    const ctrl = event.ctrlKey || event.metaKey;
    if (ctrl && event.key.toLowerCase() === "z") {
      event.preventDefault();
      (event.shiftKey ? onRedo : onUndo)();
      return;
    }
    if (!at) return;
    if (event.key === " " || event.key === "Enter") {
      event.preventDefault();
      toggle(at);
      return;
    }
    const next = cellAfter(event.key, ctrl, at, uprightLayout.matches);
    if (!next) return;
    event.preventDefault();
    if (event.shiftKey) {
      anchor.current ??= { cell: at, allowed: !isAllowed(slots, at), before: slots };
      finish(paint(anchor.current.before, anchor.current.cell, next, anchor.current.allowed));
    } else {
      anchor.current = undefined;
    }
    focus(next);
  };

  const onPointerDown = (event: PointerEvent) => {
    const cell = cellOf(event.target);
    if (!cell || event.button !== 0) return;
    event.preventDefault();
    focus(cell);
    if (locked[cell.day]) return;
    grid.current?.setPointerCapture(event.pointerId);
    const allowed = !isAllowed(slots, cell);
    anchor.current = { cell, allowed, before: slots };
    setStroke({ from: cell, to: cell, allowed });
  };
  const onPointerMove = (event: PointerEvent) => {
    if (!stroke) return;
    const cell = cellOf(document.elementFromPoint(event.clientX, event.clientY));
    if (cell && (cell.day !== stroke.to.day || cell.hour !== stroke.to.hour)) setStroke({ ...stroke, to: cell });
  };
  const onPointerUp = () => stroke && finish(paint(slots, stroke.from, stroke.to, stroke.allowed));

  const today = dayOfWeek(now.value);
  return (
    <div
      ref={grid}
      class="week"
      role="grid"
      aria-label={t.grid}
      aria-multiselectable="true"
      onKeyDown={onKeyDown}
      onPointerDown={onPointerDown}
      onPointerMove={onPointerMove}
      onPointerUp={onPointerUp}
      onPointerCancel={() => setStroke(undefined)}
    >
      <div role="row" class="contents">
        <span role="columnheader" class="corner"><span class="hidden">{t.now}</span></span>
        {hours.map((hour) => (
          <span key={hour} role="columnheader" class="hour" style={{ "--hour": hour }}>
            <button
              type="button"
              tabIndex={-1}
              aria-label={hourText(hour)}
              onClick={() => finish(paintLine(slots, { day: 0, hour }, { day: daysInWeek - 1, hour }))}
            >
              {hourText(hour).slice(0, 2)}
            </button>
          </span>
        ))}
      </div>
      {days.map((day) => (
        <div key={day} role="row" class="contents">
          <span
            role="rowheader"
            class={day === today ? "day today" : "day"}
            style={{ "--day": day }}
            aria-label={dayName(day)}
          >
            <button
              type="button"
              tabIndex={-1}
              disabled={locked[day]}
              onClick={() => finish(paintLine(slots, { day, hour: 0 }, { day, hour: hoursInDay - 1 }))}
            >
              <span class="full">{dayName(day)}</span>
              <span class="short">{dayName(day, true)}</span>
            </button>
          </span>
          {hours.map((hour) => (
            <div
              key={hour}
              role="gridcell"
              class="cell"
              style={{ "--day": day, "--hour": hour }}
              tabIndex={focused.day === day && focused.hour === hour ? 0 : -1}
              data-day={day}
              data-hour={hour}
              aria-selected={isAllowed(shown, { day, hour })}
              aria-readonly={locked[day] || undefined}
              aria-label={fill(t.cell, dayName(day), hourText(hour), hourText(hour + 1))}
            >
              {day === today && hour === now.value.getHours() && (
                <i class="present" style={{ "--part": now.value.getMinutes() / 60 }} />
              )}
            </div>
          ))}
        </div>
      ))}
    </div>
  );
}
