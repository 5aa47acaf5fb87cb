import assert from "node:assert/strict";
import test from "node:test";
import { addressForms, decodePunycode, storedForm } from "web/logic/Address";

test("Punycode is decoded as RFC 3492's samples have it", () => {
  assert.equal(decodePunycode("ihqwcrb4cv8a8dqg056pqjye"), "他们为什么不说中文");
  assert.equal(decodePunycode("Proprostnemluvesky-uyb24dma41a"), "Pročprostěnemluvíčesky");
  assert.equal(decodePunycode("PorqunopuedensimplementehablarenEspaol-fmd56a"), "PorquénopuedensimplementehablarenEspañol");
  assert.equal(decodePunycode("de-jg4avhby1noc0d"), "パフィーdeルンバ");
});

test("text that is no Punycode is none", () => {
  for (const text of ["ä", "a-!", "99999999999999", "a-zzzzzzzzzzzzzz"]) assert.equal(decodePunycode(text), undefined, text);
});

test("an address is readable only where a browser would go to the stored one for it", () => {
  assert.deepEqual(addressForms("https://xn--bcher-kva.example:8080/xn--a?b#c"), {
    stored: "https://xn--bcher-kva.example:8080/xn--a?b#c",
    readable: "https://bücher.example:8080/xn--a?b#c",
  });
  // A full-width letter is another name's mapping, and "xn--0" decodes to nothing.
  for (const stored of ["xn--ruaa.example", "xn--0.example", "www.example.com"])
    assert.equal(addressForms(stored).readable, undefined, stored);
});

test("what is typed is stored with the host's ASCII form, or is no address", () => {
  assert.equal(storedForm("  Bücher.example/Straße "), "xn--bcher-kva.example/Straße");
  assert.equal(storedForm("https://spaß.example"), "https://xn--spa-7ka.example");
  for (const typed of ["", "example", "two words.example", "ftp://example.com", "a..example", "a.example/b c", "http://"])
    assert.equal(storedForm(typed), undefined, typed);
});
