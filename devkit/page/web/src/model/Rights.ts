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

export const settingsPages = {
  settings: {
    request: `${triggers}request_show_settings_ui`,
    shown: `${triggers}show_settings_ui`,
    closed: `${triggers}settings_ui_closed`,
  },
  webFilter: {
    request: `${triggers}request_show_wf_page`,
    shown: `${triggers}show_wf_page`,
    closed: `${triggers}settings_ui_closed`,
  },
  timeLimits: {
    request: `${triggers}request_show_tl_page`,
    shown: `${triggers}show_tl_page`,
    closed: `${triggers}settings_ui_closed`,
  },
  websites: {
    request: `${lists}request_show_website_list`,
    shown: `${lists}show_website_list`,
    closed: `${lists}close_website_list`,
  },
} as const satisfies Record<string, SettingsPage>;

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
