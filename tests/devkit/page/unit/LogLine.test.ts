import assert from "node:assert/strict";
import { test } from "node:test";
import { overlap, parseLine, type LogLine } from "web/logic/LogLine";

test("a line of a message that has several takes its level", () => {
  const rows: LogLine[] = [];
  const lines = ["2024-05-06 07:08:09.010 [1a.2b] *E: first", "goes on", "", "no level"];
  for (const line of lines) rows.push(parseLine(line, rows.at(-1)));
  assert.deepEqual(rows.map(({ number, level, message }) => [number, level, message]), [
    [1, 2, "first"], [2, 2, "goes on"], [3, 0, ""], [4, 0, "no level"],
  ]);
});

test("lines that were read already are not shown twice when they come as events", () => {
  assert.equal(overlap(["a", "b", "b"], ["b", "b", "c"]), 2);
  assert.equal(overlap(["a", "b"], ["c"]), 0);
  assert.equal(overlap([], ["c"]), 0);
});
