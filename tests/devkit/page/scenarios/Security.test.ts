import assert from "node:assert/strict";
import { createServer, type Server } from "node:http";
import type { AddressInfo } from "node:net";
import { after, before, test } from "node:test";
import { becomes, openPage } from "../support/Browser";
import { Host } from "../support/Host";
import { exchange, get, Wire } from "../support/Wire";

let host: Host;
let foreign: Server;
before(async () => {
  host = await Host.start();
  foreign = createServer((_, response) => response.setHeader("Content-Type", "text/html").end("<title>elsewhere</title>"));
  await new Promise<void>((resolve) => foreign.listen(0, "127.0.0.1", resolve));
});
after(async () => {
  foreign.close();
  await host.end();
});

const status = async (request: string) => (await exchange(host.port, request)).slice(0, 12);
const own = () => `Host: 127.0.0.1:${host.port}`;
const hello = (token: string) => JSON.stringify({ id: 1, op: "hello", token });

test("only what is asked for under an own name, from an own page, is served", async () => {
  const upgrade = ["Upgrade: websocket", "Connection: Upgrade", "Sec-WebSocket-Key: AAAAAAAAAAAAAAAAAAAAAA==", "Sec-WebSocket-Version: 13"];
  const cases: [request: string, wanted: string][] = [
    [get("/", [own()]), "HTTP/1.1 200"],
    [get("/", [`Host: LOCALHOST:${host.port}`]), "HTTP/1.1 200"],
    [get("/", [own(), `Origin: http://127.0.0.1:${host.port}`]), "HTTP/1.1 200"],
    [get("/", []), "HTTP/1.1 403"],
    [get("/", ["Host: 127.0.0.1"]), "HTTP/1.1 403"],
    [get("/", [`Host: attacker.example:${host.port}`]), "HTTP/1.1 403"],
    [get("/", [`Host: 127.0.0.1.attacker.example:${host.port}`]), "HTTP/1.1 403"],
    [get("/socket", [own(), "Origin: http://attacker.example", ...upgrade]), "HTTP/1.1 403"],
    [get("/socket", [own(), "Origin: null", ...upgrade]), "HTTP/1.1 403"],
    [get("/socket", [own(), `Origin: http://localhost:${host.port}`, ...upgrade]), "HTTP/1.1 403"],
    [get("/socket", [`Host: attacker.example:${host.port}`, ...upgrade]), "HTTP/1.1 403"],
    [get("/", [own(), own()]), "HTTP/1.1 400"],
    [get("/", [`Host : 127.0.0.1:${host.port}`]), "HTTP/1.1 400"],
    ["GET / HTTP/1.0\r\n\r\n", "HTTP/1.1 400"],
    [`POST / HTTP/1.1\r\n${own()}\r\n\r\n`, "HTTP/1.1 405"],
    [get("/../etc/passwd", [own()]), "HTTP/1.1 404"],
    [get("/", [own(), `X: ${"x".repeat(9000)}`]), "HTTP/1.1 431"],
  ];
  for (const [request, wanted] of cases) assert.equal(await status(request), wanted, request.slice(0, 120));
});

test("the page runs its own script only, in no frame, and keeps nothing", async () => {
  const head = (await exchange(host.port, get("/", [own()]))).split("\r\n\r\n")[0]!;
  const policy = /Content-Security-Policy: (.*)/.exec(head)?.[1] ?? "";
  for (const part of ["default-src 'none'", "script-src 'sha256-", "style-src 'sha256-", "frame-ancestors 'none'"])
    assert.ok(policy.includes(part), `${part} in ${policy}`);
  assert.ok(!policy.includes("unsafe") && !policy.includes("*"), policy);
  assert.ok(policy.includes(`connect-src ws://127.0.0.1:${host.port};`), policy);
  assert.ok(!/set-cookie/i.test(head) && /no-store/.test(head) && /X-Frame-Options: DENY/.test(head), head);
});

test("a foreign page reaches nothing, with or without the token", async () => {
  const page = await openPage(`http://127.0.0.1:${(foreign.address() as AddressInfo).port}/`);
  const tried = await page.evaluate(
    async ([port, token]) => {
      const fetched = await fetch(`http://127.0.0.1:${port}/`).then((r) => r.text()).catch(() => "refused");
      const socket = new WebSocket(`ws://127.0.0.1:${port}/socket`);
      socket.onopen = () => socket.send(JSON.stringify({ id: 1, op: "hello", token }));
      const opened = await new Promise((resolve) => {
        socket.onmessage = () => resolve("answered");
        socket.onclose = () => resolve("refused");
      });
      const frame = document.body.appendChild(document.createElement("iframe"));
      frame.src = `http://127.0.0.1:${port}/#${token}`;
      await new Promise((resolve) => (frame.onload = resolve));
      return [fetched, opened];
    },
    [String(host.port), host.token],
  );
  assert.deepEqual(tried, ["refused", "refused"]);
  const framed = page.frames().find((frame) => frame !== page.mainFrame());
  assert.ok(!(await framed?.content().catch(() => ""))?.includes("Veridan"));
  await page.context().close();
});

test("without the token of this start nothing is answered", async () => {
  const stale = host.token.slice(0, -1) + (host.token.endsWith("A") ? "B" : "A");
  for (const first of [hello(""), hello(stale), hello(host.token + "A"), '{"id":1,"op":"info"}', "[]", "x".repeat(2000)]) {
    const wire = await Wire.open(host.port);
    wire.send(first);
    assert.ok([1008, 1009].includes(await wire.closed), first.slice(0, 60));
    assert.deepEqual(wire.messages, []);
  }
  assert.match(host.token, /^[\w-]{22,}$/); // 128 bits and more
});

test("a page with a stale token says so and stops trying", async () => {
  const page = await openPage(host.address.replace(/#.*/, "#stale"));
  await page.getByRole("alert").getByText("belongs to an earlier start").waitFor();
  await page.evaluate((token) => (location.hash = token), host.token);
  await page.getByRole("heading", { name: "You are protected" }).waitFor();
  await page.context().close();
});

test("a page may not end the host unless that was wished for", async () => {
  const wire = await Wire.open(host.port);
  wire.send(hello(host.token));
  wire.send('{"id":2,"op":"quit"}');
  await becomes(() => wire.messages.length, 2);
  assert.equal(JSON.parse(wire.messages[1]!).ok, false);
  wire.end();
  const willing = await Host.start({ load: false, arguments: ["--page-may-quit"] });
  const other = await Wire.open(willing.port);
  other.send(hello(willing.token));
  other.send('{"id":2,"op":"quit"}');
  await other.closed;
  await willing.end();
});

test("a client that floods or does not read is dropped, and the others are served", async () => {
  const page = await openPage(host.address);
  await page.getByRole("heading", { name: "You are protected" }).waitFor();

  const flood = await Wire.open(host.port);
  flood.send(hello(host.token));
  for (let i = 0; i < 20_000; ++i) flood.send('{"id":2,"op":"info"}');
  assert.ok([1008, 0].includes(await flood.closed)); // 0: it went on sending, and the connection was cut

  const deaf = await Wire.open(host.port);
  deaf.send(hello(host.token));
  await becomes(() => deaf.messages.length, 1);
  deaf.send('{"id":2,"op":"watch","prefix":"@Page"}');
  await becomes(() => deaf.messages.length, 2);
  deaf.stopReading();
  const text = "x".repeat(1024 * 1024);
  for (let i = 0; i < 40; ++i) await host.request("set", { name: "@Page:text", value: `${i}${text}` });
  deaf.readOn();
  assert.ok([1013, 0].includes(await deaf.closed));
  assert.ok(deaf.messages.length < 40);

  await host.set("system", "windows.browsing_protection.enabled", "bool", false);
  await page.getByRole("heading", { name: "You are not protected" }).waitFor();
  await page.context().close();
});
