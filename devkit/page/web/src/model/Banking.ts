import { computed, signal } from "@preact/signals";
import { connection } from "../connection/Connection";
import { changeSetting, settingValue } from "./Settings";
import { fire, firedSince, onTrigger, variable } from "./Variables";

const triggers = "@SafeBanking\\Triggers:";
const sessionOpen = "windows.browsing_protection.internal.banking_session_open";

/// What the banking flyer shows; "closed" between sessions.
export const bankingFlyer = signal<"closed" | "open" | "collapsed">("closed");
export const bankingDescription = variable<string>("@SafeBanking\\Data:description");
const baseDescription = variable<string>("@SafeBanking\\Strings:description");
export const flyerText = computed(() => bankingDescription.value || baseDescription.value || "");

export async function collapseFlyer(): Promise<void> {
  bankingFlyer.value = "collapsed";
  await fire(`${triggers}hideFlyerDetails`);
}

export function expandFlyer(): void {
  bankingFlyer.value = "open";
}

/// Ends the session as the flyer's button does. The plug-in takes the first closing of its life for the echo of its
/// start, so that one goes ahead where there was none. No banking service runs beside the host: its part, to note that
/// the session has ended, is done here.
export async function endSession(): Promise<void> {
  if (closings === 0) await fire(`${triggers}closeBankingSession`);
  await fire(`${triggers}closeBankingSession`);
  await changeSetting("system", sessionOpen, "bool", false);
}

let closings = 0;
onTrigger(`${triggers}closeBankingSession`, () => closings++);
onTrigger(`${triggers}flyerOpen`, () => (bankingFlyer.value = "open"));
onTrigger(`${triggers}flyerHide`, () => (bankingFlyer.value = "collapsed"));
onTrigger(`${triggers}flyerClose`, () => (bankingFlyer.value = "closed"));
connection.on("host", ({ initialized }) => {
  if (!initialized) bankingFlyer.value = "closed";
  closings = 0;
});

connection.onConnect(async () => {
  closings = (await connection.request("history", { name: `${triggers}closeBankingSession` })).length;
  const opened = await firedSince(`${triggers}flyerOpen`, `${triggers}flyerClose`);
  const hidden = await firedSince(`${triggers}flyerHide`, `${triggers}flyerOpen`);
  bankingFlyer.value = opened === 0 ? "closed" : hidden > 0 ? "collapsed" : "open";
});

export function clearsClipboard(): boolean {
  return settingValue("system", "windows.browsing_protection.banking_protection.clear_clipboard_after_banking_session", true);
}
