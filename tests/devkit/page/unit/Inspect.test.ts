import assert from "node:assert/strict";
import { test } from "node:test";
import { ChangeLog } from "web/logic/ChangeLog";
import { differences } from "web/logic/Difference";
import { IdTree } from "web/logic/IdTree";
import { brief, parseJson } from "web/logic/JsonText";

test("ids stand in a sorted tree, whose filter hides branches and whose pins come first", () => {
  const tree = new IdTree<string>();
  for (const id of ["@B\\Data:two", "@B\\Data:one", "@A:only", "@B\\Data"]) tree.add(id, id, true);
  const rows = (pins: string[] = []) => tree.rows((path) => path !== "@A:", pins).map(({ key, depth }) => `${depth} ${key}`);
  assert.deepEqual(rows(), ["0 @A:", "0 @B\\", "1 @B\\Data", "1 @B\\Data:", "2 @B\\Data:one", "2 @B\\Data:two"]);
  tree.setPasses("@A:only", false);
  tree.setPasses("@B\\Data:two", false);
  tree.setPasses("@B\\Data:two", false);
  assert.deepEqual(rows(["@B\\Data:", "@gone:"]), [
    "0 pinned @B\\Data:", "1 pinned @B\\Data:one", "0 @B\\", "1 @B\\Data", "1 @B\\Data:", "2 @B\\Data:one",
  ]);
  assert.equal(tree.root.shown, 2);
});

test("two values differ place by place", () => {
  const at = (before: Parameters<typeof differences>[0], now: Parameters<typeof differences>[1]) =>
    differences(before, now).map(({ path }) => path);
  assert.deepEqual(at({ a: [1, { b: 2 }], c: 3 }, { a: [1, { b: 5 }], d: null }), ["a.1.b", "c", "d"]);
  assert.deepEqual(at([], {}), [""]);
  assert.deepEqual(at({ toString: 1 }, {}), ["toString"]);
  assert.equal(differences([...Array(99).keys()], []).length, 50);
});

test("a value is shown briefly, and one that cannot be sent as it stands is refused", () => {
  assert.equal(brief({ a: [1, "x\n", null], b: {} }), '{"a":[1,"x\\n",null],"b":{}}');
  assert.equal(brief(Array<string>(1e6).fill("long"), 10).length, 11);
  assert.ok("problem" in parseJson("{a:1}"));
  assert.ok("problem" in parseJson('{"a":[9007199254740993]}'));
  assert.deepEqual(parseJson("1.5"), { value: 1.5 });
});

test("the newest changes are kept, with what led to what", () => {
  const log = new ChangeLog();
  const row = (seq: number, by: "page" | "plugin", cause?: number) =>
    ({ seq, name: `@A:${seq % 2}`, kind: "set", by, value: seq, ...(cause !== undefined && { cause }) }) as const;
  log.add([row(1, "page"), row(2, "plugin", 1), row(3, "plugin", 2), row(4, "plugin", 1)], undefined);
  log.add([row(4, "page"), row(5, "page")], 0);
  const [first, second, third] = log.changes;
  assert.deepEqual([log.changes.length, third!.depth, log.causeOf(third!), log.before(third!)], [5, 2, second, first]);
  assert.deepEqual(log.effectsOf(first!).map(({ seq }) => seq), [2, 4]);
  log.filter({ by: "plugin", name: "A:0" });
  assert.deepEqual(log.shown.map(({ seq }) => seq), [2, 4]);
  log.add(Array.from({ length: 11_001 }, (_, i) => row(6 + i, "plugin")), 0);
  assert.deepEqual([log.changes.length, log.changes[0]!.seq, log.shown[0]!.seq], [10_000, 1007, 1008]);
});
