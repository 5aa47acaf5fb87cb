/// A website's address in the form that is stored, with its host in the ASCII form, and in the one that people read.
export interface AddressForms {
  readonly stored: string;
  /// Only where it differs.
  readonly readable: string | undefined;
}

interface Parts {
  before: string;
  host: string;
  after: string;
}

const acePrefix = "xn--";

function split(address: string): Parts {
  const [, before = "", host = "", after = ""] = /^([a-z][a-z0-9+.-]*:\/\/)?([^/:?#]*)(.*)$/is.exec(address) ?? [];
  return { before, host, after };
}

/// One label of RFC 3492, without its prefix; nothing for text that is none.
export function decodePunycode(text: string): string | undefined {
  const [base, tMin, tMax, skew, damp] = [36, 1, 26, 38, 700];
  const delimiter = text.lastIndexOf("-");
  const points = [...text.slice(0, Math.max(delimiter, 0))].map((character) => character.charCodeAt(0));
  let n = 128;
  let i = 0;
  let bias = 72;
  for (let at = delimiter < 0 ? 0 : delimiter + 1; at < text.length; ) {
    const start = i;
    for (let weight = 1, k = base; ; k += base) {
      const digit = "abcdefghijklmnopqrstuvwxyz0123456789".indexOf(text[at++]?.toLowerCase() ?? "?");
      if (digit < 0) return undefined;
      i += digit * weight;
      const threshold = Math.min(Math.max(k - bias, tMin), tMax);
      if (digit < threshold) break;
      weight *= base - threshold;
      if (i > 0x7fffffff || weight > 0x7fffffff) return undefined;
    }
    const count = points.length + 1;
    let delta = Math.floor((i - start) / (start === 0 ? damp : 2));
    delta += Math.floor(delta / count);
    let k = 0;
    for (; delta > ((base - tMin) * tMax) >> 1; k += base) delta = Math.floor(delta / (base - tMin));
    bias = k + Math.floor(((base - tMin + 1) * delta) / (delta + skew));
    n += Math.floor(i / count);
    if (n > 0x10ffff || (n >= 0xd800 && n < 0xe000)) return undefined;
    points.splice(i % count, 0, n);
    i = (i % count) + 1;
  }
  return String.fromCodePoint(...points);
}

function hostOf(address: string): string | undefined {
  try {
    return new URL(`http://${address}`).hostname;
  } catch {
    return undefined;
  }
}

/// The readable form is shown only where a browser would go to the stored host for it.
export function addressForms(stored: string): AddressForms {
  if (!stored.toLowerCase().includes(acePrefix)) return { stored, readable: undefined };
  const { before, host, after } = split(stored);
  const labels = host.split(".").map((label) => {
    const isAce = label.toLowerCase().startsWith(acePrefix);
    return isAce ? (decodePunycode(label.slice(acePrefix.length)) ?? label) : label;
  });
  const readable = labels.join(".");
  const same = readable !== host && hostOf(readable) === host.toLowerCase();
  return { stored, readable: same ? before + readable + after : undefined };
}

/// What somebody typed as the address that will be stored; nothing for what is no address of a website.
export function storedForm(typed: string): string | undefined {
  const { before, host, after } = split(typed.trim());
  const ascii = hostOf(host);
  if (!ascii || !/^[^.\s]+(\.[^.\s]+)+$/.test(ascii) || /\s/.test(after)) return undefined;
  if (before && !/^https?:/i.test(before)) return undefined;
  return before + ascii + after;
}
