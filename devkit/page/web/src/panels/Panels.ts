import type { ComponentType } from "preact";
import { HistoryPanel } from "./HistoryPanel";
import { VariablesPanel } from "./VariablesPanel";

export interface Panel {
  /// In the address.
  name: string;
  title: string;
  Panel: ComponentType;
}

/// What a developer sees beside the suite's pages, in the navigation's order.
export const panels: readonly Panel[] = [
  { name: "variables", title: "Variables", Panel: VariablesPanel },
  { name: "history", title: "History", Panel: HistoryPanel },
];
