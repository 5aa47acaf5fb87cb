import assert from "node:assert/strict";
import test from "node:test";
import { allowedHours, cellAfter, everyHour, isAllowed, isSlots, noHour, paint, paintLine } from "web/logic/WeekGrid";
import { Edits } from "web/logic/Edits";

test("a stroke paints the rectangle between its ends, in whichever direction it was drawn", () => {
  const painted = paint(everyHour, { day: 6, hour: 23 }, { day: 5, hour: 22 }, false);
  assert.equal(painted, paint(everyHour, { day: 5, hour: 22 }, { day: 6, hour: 23 }, false));
  assert.equal(allowedHours(painted), 164);
  assert.ok(!isAllowed(painted, { day: 5, hour: 23 }) && !isAllowed(painted, { day: 6, hour: 22 }));
  assert.ok(isAllowed(painted, { day: 5, hour: 21 }) && isAllowed(painted, { day: 4, hour: 23 }));
  assert.ok(isSlots(painted));
});

test("the week begins on Monday and ends with Sunday's last hour", () => {
  assert.equal(paint(noHour, { day: 0, hour: 0 }, { day: 0, hour: 0 }, true), "1" + "0".repeat(167));
  assert.equal(paint(noHour, { day: 6, hour: 23 }, { day: 6, hour: 23 }, true), "0".repeat(167) + "1");
});

test("a head allows its whole line, and denies it where all of it was allowed", () => {
  const [from, to] = [{ day: 2, hour: 0 }, { day: 2, hour: 23 }];
  const partly = paint(noHour, { day: 2, hour: 5 }, { day: 2, hour: 5 }, true);
  assert.equal(allowedHours(paintLine(partly, from, to)), 24);
  assert.equal(paintLine(paintLine(partly, from, to), from, to), noHour);
});

test("keys move within the week, along the layout", () => {
  const cases: [key: string, ctrl: boolean, upright: boolean, day: number, hour: number][] = [
    ["ArrowRight", false, false, 3, 13],
    ["ArrowRight", false, true, 4, 12],
    ["ArrowDown", false, false, 4, 12],
    ["ArrowDown", false, true, 3, 13],
    ["ArrowLeft", false, false, 3, 11],
    ["ArrowUp", false, true, 3, 11],
    ["Home", false, false, 3, 0],
    ["End", false, true, 6, 12],
    ["PageDown", false, false, 6, 12],
    ["Home", true, false, 0, 0],
    ["End", true, true, 6, 23],
  ];
  for (const [key, ctrl, upright, day, hour] of cases)
    assert.deepEqual(cellAfter(key, ctrl, { day: 3, hour: 12 }, upright), { day, hour }, `${key} ${upright}`);
  assert.deepEqual(cellAfter("ArrowRight", false, { day: 6, hour: 23 }, false), { day: 6, hour: 23 });
  assert.equal(cellAfter("a", false, { day: 0, hour: 0 }, false), undefined);
});

test("steps are undone and redone in order, and a new one ends what could be redone", () => {
  const edits = Edits.of("a").to("b").to("b").to("c");
  assert.equal(edits.undo().now, "b");
  assert.equal(edits.undo().undo().undo().now, "a");
  assert.equal(edits.undo().undo().redo().redo().now, "c");
  assert.ok(!edits.undo().to("d").canRedo);
  assert.equal(edits.undo().to("d").undo().now, "b");
});
