import assert from "node:assert/strict";
import test from "node:test";
import { clockText, joined, outlook, type DayFacts } from "web/logic/DayBand";
import { countedDays, dateOfJulianDay, julianDay, lastDays } from "web/logic/DailyCounters";

const facts: DayFacts = {
  now: 16 * 60,
  limited: true,
  allowance: 120,
  modes: [{ used: 30 }, { used: 0 }],
  today: [],
  tomorrow: [],
};
const bedtime = { from: 21 * 60, until: 1440 };

test("ranges that touch or overlap are one, and none leaves the day", () => {
  const ranges = [{ from: 600, until: 700 }, { from: -5, until: 60 }, { from: 60, until: 90 }, { from: 650, until: 1500 }];
  assert.deepEqual(joined([...ranges, { from: 100, until: 100 }]), [{ from: 0, until: 90 }, { from: 600, until: 1440 }]);
});

test("what ends the day is what comes first", () => {
  const cases: [change: Partial<DayFacts>, binding: string, minutesLeft: number | undefined][] = [
    [{}, "quota", 90],
    [{ limited: false }, "off", undefined],
    [{ allowance: undefined }, "none", undefined],
    [{ now: 23 * 60 }, "none", undefined],
    [{ modes: [{ used: 10 }, { used: 100 }] }, "quota", 20],
    [{ modes: [{ used: 130 }] }, "spent", 0],
    [{ allowance: 0, modes: [] }, "spent", 0],
    [{ modes: [{ used: 130, extendedUntil: 16 * 60 + 15 }] }, "extension", 15],
    [{ modes: [{ used: 30, extendedUntil: 16 * 60 + 15 }] }, "quota", 90],
    [{ today: [bedtime], now: 20 * 60 }, "bedtime", 60],
    [{ today: [bedtime], allowance: undefined }, "bedtime", 300],
    [{ today: [bedtime], now: 20 * 60, modes: [{ used: 100 }] }, "quota", 20],
    [{ today: [bedtime], now: 21 * 60 }, "curfew", 0],
  ];
  for (const [change, binding, minutesLeft] of cases) {
    const found = outlook({ ...facts, ...change });
    assert.deepEqual([found.binding, found.minutesLeft], [binding, minutesLeft], JSON.stringify(change));
  }
});

test("a bedtime that goes on after midnight ends tomorrow", () => {
  const night = { ...facts, now: 22 * 60, today: [bedtime], tomorrow: [{ from: 0, until: 7 * 60 }] };
  assert.equal(clockText(outlook(night).at ?? 0), "07:00");
  assert.equal(clockText(outlook({ ...night, tomorrow: [] }).at ?? 0), "24:00");
});

test("days are counted by the calendar, and a day without a count has none", () => {
  const today = julianDay(new Date(2026, 2, 29, 23, 59)); // a day of 23 hours in much of Europe
  assert.equal(julianDay(new Date(2026, 2, 30, 0, 1)), today + 1);
  assert.equal(julianDay(new Date(1970, 0, 1)), 2440588);
  assert.equal(dateOfJulianDay(today).getDate(), 29);
  const counters = [
    { julianDate: today, websitesChecked: 3 },
    { julianDate: today - 2, websitesChecked: 5 },
    { julianDate: today + 1, websitesChecked: 9 },
  ];
  assert.deepEqual(lastDays(counters, "websitesChecked", today, 3).map((day) => day.count), [5, 0, 3]);
  assert.equal(countedDays(counters, today), 3);
  assert.equal(countedDays(null, today), 1);
});
