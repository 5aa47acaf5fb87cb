// Bundles the tests or benchmarks of a folder, or one of its files, and runs them with Node's own test runner:
// node run.mjs FOLDER TARGET [FILE] [options of the test runner]
// What they drive is named by the environment: VERIDAN_HOST, VERIDAN_STRATA, VERIDAN_CHROMIUM.
import { spawnSync } from "node:child_process";
import { existsSync, readdirSync } from "node:fs";
import { createRequire } from "node:module";
import { dirname, join } from "node:path";
import { fileURLToPath } from "node:url";

const here = dirname(fileURLToPath(import.meta.url));
const web = join(here, "../../../devkit/page/web");
const modules = createRequire(join(web, "package.json"));
const { build } = modules("esbuild");
const [folder, target, ...rest] = process.argv.slice(2);
const options = rest.filter((word) => word.startsWith("--"));
const wanted = rest.filter((word) => !word.startsWith("--"));

if (folder === "scenarios" && !existsSync(process.env.VERIDAN_CHROMIUM ?? "/usr/bin/chromium")) {
  console.log("There is no Chromium: the scenarios are skipped.");
  process.exit(77);
}

const names = wanted.length > 0 ? wanted : readdirSync(join(here, folder)).filter((name) => /\.(test|bench)\.ts$/.test(name));
await build({
  entryPoints: names.map((name) => join(here, folder, name)),
  outdir: target,
  outExtension: { ".js": ".mjs" },
  bundle: true,
  format: "esm",
  platform: "node",
  target: "node18",
  alias: { web: join(web, "src") },
  loader: { ".md": "text" },
  plugins: [
    {
      // It stays where it is.
      name: "playwright",
      setup: (bundle) =>
        bundle.onResolve({ filter: /^playwright-core$/ }, ({ path }) => ({
          path: join(dirname(modules.resolve(path)), "index.mjs"),
          external: true,
        })),
    },
  ],
});
const files = names.map((name) => join(target, name.replace(/\.ts$/, ".mjs")));
const environment = { ...process.env, VERIDAN_AXE: modules.resolve("axe-core/axe.min.js") };
const run = (some) => spawnSync(process.execPath, ["--test", ...options, ...some], { stdio: "inherit", env: environment }).status ?? 1;
// Files are run side by side, but for benchmarks, which would disturb each other.
const measures = names.some((name) => name.endsWith(".bench.ts"));
process.exit(measures ? Math.max(...files.map((file) => run([file]))) : run(files));
