import type { Page } from "playwright-core";

/// One line of figures; `wanted` is what the slowest one in a hundred has to stay below.
export function show(what: string, samples: readonly number[], wanted?: number): void {
  const sorted = [...samples].sort((one, other) => one - other);
  const at = (part: number) => sorted[Math.min(Math.floor(part * sorted.length), sorted.length - 1)]!;
  const [median, p99, most] = [at(0.5), at(0.99), at(1)].map((value) => `${value.toFixed(1)} ms`.padStart(10));
  const verdict = wanted === undefined ? "" : `p99 < ${wanted} ms${at(0.99) < wanted ? "" : " MISSED"}`;
  console.log(`${what.padEnd(52)} ${median} ${p99} ${most}  ${verdict}`);
}

export function showHead(what: string): void {
  console.log(`${what.padEnd(52)} ${"median".padStart(10)} ${"p99".padStart(10)} ${"most".padStart(10)}  wanted`);
}

/// The lengths of the page's frames while something goes on.
export async function framesDuring(page: Page, work: () => Promise<unknown>): Promise<number[]> {
  await page.evaluate(() => {
    const frames: number[] = [];
    Object.assign(window, { measuredFrames: frames });
    let before = performance.now();
    const next = (now: number) => {
      frames.push(now - before);
      before = now;
      if ((window as unknown as { measuredFrames: unknown }).measuredFrames === frames) requestAnimationFrame(next);
    };
    requestAnimationFrame(next);
  });
  await work();
  return page.evaluate(() => {
    const { measuredFrames } = window as unknown as { measuredFrames: number[] };
    Object.assign(window, { measuredFrames: undefined });
    return measuredFrames.slice(1);
  });
}

/// Scrolls a list from its top so far down, 1 being its end, in 300 frames.
export function scrollList(page: Page, part = 1): Promise<void> {
  return page.evaluate(async (wanted) => {
    const list = document.querySelector(".scroll")!;
    for (let i = 1; i <= 300; ++i) {
      list.scrollTop = ((list.scrollHeight - list.clientHeight) * wanted * i) / 300;
      await new Promise(requestAnimationFrame);
    }
  }, part);
}
