import type { ComponentType } from "preact";
import { ActivityPanel } from "./ActivityPanel";
import { FaultsPanel } from "./FaultsPanel";
import { HistoryPanel } from "./HistoryPanel";
import { LogPanel } from "./LogPanel";
import { RecordingPanel } from "./RecordingPanel";
import { ServicePanel } from "./ServicePanel";
import { StorePanel } from "./StorePanel";
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
  { name: "store", title: "Store", Panel: StorePanel },
  { name: "log", title: "Log", Panel: LogPanel },
  { name: "activity", title: "Activity", Panel: ActivityPanel },
  { name: "faults", title: "Faults", Panel: FaultsPanel },
  { name: "service", title: "Service", Panel: ServicePanel },
  { name: "recording", title: "Recording", Panel: RecordingPanel },
];
