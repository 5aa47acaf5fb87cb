// Writes the types of the host's commands from its own schema: node generate-commands.mjs HOST [--check]
// --check only says, with exit code 1, whether they are others by now.
import { execFileSync } from "node:child_process";
import { readFileSync, writeFileSync } from "node:fs";
import { dirname, join } from "node:path";
import { fileURLToPath } from "node:url";

const [host, check] = process.argv.slice(2);
const file = join(dirname(fileURLToPath(import.meta.url)), "src/connection/Commands.ts");
const output = execFileSync(host, ["--jsonl", "--temporary", "--no-page"], {
  input: '{"id": 1, "op": "schema"}\n',
  encoding: "utf8",
  maxBuffer: 1 << 26,
});
const answer = output
  .split("\n")
  .filter(Boolean)
  .map((line) => JSON.parse(line))
  .find((message) => message.id === 1);

const types = {
  any: "Json", string: "string", name: "string", variable: "string", strings: "string[]", bool: "boolean",
  stringMap: "Record<string, string>", entries: "Record<string, Json>",
};

function typeOf({ type, choices }) {
  const words = choices?.map((choice) => JSON.stringify(choice)).join(" | ");
  if (words) return type === "strings" ? `(${words})[]` : words;
  return types[type] ?? "number";
}

const rows = answer.result.map(({ op, help, parameters }) => {
  const members = parameters.map((parameter) => `${parameter.name}${parameter.required ? "" : "?"}: ${typeOf(parameter)}`);
  const type = members.length > 0 ? `{ ${members.join("; ")} }` : "Record<string, never>";
  return `  /// ${help}\n  ${/^\w+$/.test(op) ? op : JSON.stringify(op)}: ${type};\n`;
});
const text = `// Made of the host's schema by generate-commands.mjs; not to be edited.

export type Json = null | boolean | number | string | Json[] | { [name: string]: Json };

export interface Commands {
${rows.join("")}}
`;
if (!check) {
  writeFileSync(file, text);
} else if (readFileSync(file, "utf8") !== text) {
  console.error(`${file} is not what the host's schema says; node generate-commands.mjs HOST writes it anew.`);
  process.exit(1);
}
