import { signal } from "@preact/signals";
import { fire, onTrigger } from "./Variables";

/// How a settings page is asked for, how the plug-in shows it once its user has the rights, and how it is closed.
export interface SettingsPage {
  request: string;
  shown: string;
  closed: string;
}

const triggers = "@Veridan\\Settings\\Triggers:";
const lists = "@ContentControl\\Triggers:";
const page = (group: string, name: string, closed = `${triggers}settings_ui_closed`): SettingsPage => ({
  request: `${group}request_show_${name}`,
  shown: `${group}show_${name}`,
  closed,
});

export const settingsPages = {
  settings: page(triggers, "settings_ui"),
  webFilter: page(triggers, "wf_page"),
  timeLimits: page(triggers, "tl_page"),
  websites: page(lists, "website_list", `${lists}close_website_list`),
} as const;

/// A change is under way: its controls wait.
export const changing = signal(false);

/// Asks for the page as a user's click does. False: the administrator rights were refused.
export async function openSettings(page: SettingsPage): Promise<boolean> {
  let shown = false;
  const end = onTrigger(page.shown, (row) => (shown ||= row.by === "plugin"));
  try {
    await fire(page.request);
  } finally {
    end();
  }
  return shown;
}

/// Opens the page, makes a change and closes it again. False: the rights were refused, and nothing was changed.
export async function withSettings(page: SettingsPage, change: () => Promise<void>): Promise<boolean> {
  changing.value = true;
  try {
    if (!(await openSettings(page))) return false;
    try {
      await change();
    } finally {
      await fire(page.closed);
    }
    return true;
  } finally {
    changing.value = false;
  }
}
