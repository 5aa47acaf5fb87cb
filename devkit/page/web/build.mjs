// Builds the page: one HTML file with its script and style inside, and beside it the hashes by which the server's
// content security policy allows exactly these two. node build.mjs FOLDER
import { createHash } from "node:crypto";
import { mkdirSync, readFileSync, writeFileSync } from "node:fs";
import { dirname, join } from "node:path";
import { fileURLToPath } from "node:url";
import { build } from "esbuild";

const source = join(dirname(fileURLToPath(import.meta.url)), "src");
const target = process.argv[2] ?? "dist";

async function bundle(entry) {
  const { outputFiles } = await build({
    absWorkingDir: dirname(source),
    entryPoints: [join(source, entry)],
    bundle: true,
    minify: true,
    write: false,
    format: "iife",
    target: ["es2022", "chrome120", "firefox120", "safari17.5"],
    jsx: "automatic",
    jsxImportSource: "preact",
    legalComments: "none",
    loader: { ".md": "text" },
    logLevel: "warning",
  });
  return outputFiles[0].text.trim();
}

// What would end the element early is written so that it doesn't.
const script = (await bundle("main.tsx")).replaceAll("</script", "<\\/script");
const style = await bundle("style/page.css");
const hash = (text) => `'sha256-${createHash("sha256").update(text).digest("base64")}'`;
const page = readFileSync(join(source, "page.html"), "utf8")
  .replace("/*style*/", () => style)
  .replace("/*script*/", () => script);

mkdirSync(target, { recursive: true });
writeFileSync(join(target, "page.html"), page);
writeFileSync(join(target, "policy.txt"), `script-src ${hash(script)}; style-src ${hash(style)}`);
