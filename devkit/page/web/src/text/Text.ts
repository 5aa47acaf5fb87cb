import { computed, signal } from "@preact/signals";
import { connection } from "../connection/Connection";
import { variable } from "../model/Variables";
import de from "./de.json";
import en from "./en.json";

export const languages = { en: "English", de: "Deutsch" } as const;
export type Language = keyof typeof languages;
export type Text = typeof en;

const catalogues: Record<Language, Text> = { en, de };
const chosen = variable<string>("@Localization:language_id");

/// The language is the host's: every page that is open shows the same.
export const language = computed<Language>(() => (chosen.value === "de" ? "de" : "en"));
export const text = computed<Text>(() => catalogues[language.value]);
export const appearance = signal<"auto" | "light" | "dark">("auto");

/// The language's form of numbers, such as "1,234" or "1.234".
export const numbers = computed(() => new Intl.NumberFormat(language.value));

/// A sentence with its %1, %2 … filled in.
export function fill(sentence: string, ...values: readonly (string | number)[]): string {
  return sentence.replace(/%(\d)/g, (_, place: string) => String(values[Number(place) - 1] ?? ""));
}

/// The singular or the plural form with its number.
export function counted(forms: readonly string[], count: number): string {
  return fill(forms[count === 1 ? 0 : 1] ?? "", count);
}

export function duration(minutes: number): string {
  const forms = text.value.duration;
  const [hours, rest] = [Math.floor(minutes / 60), minutes % 60];
  if (hours === 0) return fill(forms.minutes, rest);
  return rest === 0 ? fill(forms.hours, hours) : fill(forms.both, hours, rest);
}

/// Fills the strings that the plug-in asks the host for, and tells it that they are others now.
export async function chooseLanguage(wanted: Language): Promise<void> {
  await connection.request("strings", { language: wanted, values: catalogues[wanted].host });
}

connection.onConnect(async () => {
  if (chosen.value !== "en" && chosen.value !== "de") await chooseLanguage("en");
});
