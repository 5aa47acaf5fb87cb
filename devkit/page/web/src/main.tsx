import { render } from "preact";
// In the order in which they ask the host once it is reached.
import "./model/Variables";
import "./text/Text";
import "./model/Settings";
import "./model/Elevation";
import "./model/Flyers";
import "./model/Urls";
import "./model/Faults";
import "./model/PlugIn";
import { connection } from "./connection/Connection";
import { token, type Route } from "./model/Route";
import { BankingProtectionPage } from "./pages/BankingProtectionPage";
import { BrowserExtensionsPage } from "./pages/BrowserExtensionsPage";
import { BrowsingProtectionPage } from "./pages/BrowsingProtectionPage";
import { FamilyRulesPage } from "./pages/FamilyRulesPage";
import { MainPage } from "./pages/MainPage";
import { StatisticsPage } from "./pages/StatisticsPage";
import { TimeLimitsPage } from "./pages/TimeLimitsPage";
import { WebFilterPage } from "./pages/WebFilterPage";
import { WebsitesPage } from "./pages/WebsitesPage";
import { panels } from "./panels/Panels";
import { Frame } from "./parts/Frame";
import type { ComponentType } from "preact";

const pages: Record<Route, ComponentType> = {
  main: MainPage,
  "browsing-protection": BrowsingProtectionPage,
  "browser-extensions": BrowserExtensionsPage,
  "banking-protection": BankingProtectionPage,
  "web-page-filter": WebFilterPage,
  websites: WebsitesPage,
  "time-limits": TimeLimitsPage,
  "family-rules": FamilyRulesPage,
  statistics: StatisticsPage,
};

render(<Frame pages={pages} panels={panels} />, document.getElementById("page")!);
// Another token in the address is another start of the host.
token.subscribe((value) => connection.open(value));
