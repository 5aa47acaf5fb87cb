const paths = {
  main: "M4 11.5 12 4l8 7.5M6.5 9.5V20h11V9.5M10 20v-5.5h4V20",
  "browsing-protection": "M12 3.5 19 6v5.5c0 4.3-2.8 7.4-7 9-4.2-1.6-7-4.7-7-9V6zM9 12l2.2 2.2L15.2 10",
  "browser-extensions": "M9 5.5a2 2 0 0 1 4 0V7h4.5v4H19a2 2 0 0 1 0 4h-1.500v5h-5v-1.500a2 2 0 0 0-4 0V20H4v-5h1.500a2 2 0 0 0 0-4H4V7h5z",
  "banking-protection": "M4 9.500 12 4.500l8 5zM6 10v7M10 10v7M14 10v7M18 10v7M4 19.500h16",
  "web-page-filter": "M4 5.500h16l-6.300 7.200V19l-3.400-2v-4.300z",
  websites: "M12 3.500a8.500 8.500 0 1 0 0 17 8.500 8.500 0 0 0 0-17M3.500 12h17M12 3.500c2.300 2.300 3.500 5.200 3.500 8.500S14.300 18.200 12 20.500C9.700 18.200 8.500 15.300 8.500 12S9.700 5.800 12 3.500",
  "time-limits": "M12 4a8.500 8.500 0 1 0 0 17 8.500 8.500 0 0 0 0-17M12 8v4.700l3 2M9.500 2h5",
  "family-rules": "M8.500 11a3 3 0 1 0 0-6 3 3 0 0 0 0 6M3 19.500c0-3.300 2.300-5.500 5.500-5.500s5.500 2.200 5.500 5.500M16.500 12a2.300 2.300 0 1 0 0-4.600M16.500 14.500c2.700 0 4.500 1.900 4.500 4.500",
  statistics: "M4 20h16M6.500 17v-5M12 17V5M17.500 17V9",
  lock: "M7 11V8a5 5 0 0 1 10 0v3M5.500 11h13v9h-13z",
  warning: "M12 4 21 19.500H3zM12 10v4.500M12 17v.2",
  check: "M5 12.500 10 17.500 19 7.500",
  close: "M6 6l12 12M18 6 6 18",
  bell: "M6.500 16.500V11a5.500 5.500 0 0 1 11 0v5.500l1.500 1.500H5zM10 20.500h4",
} as const;

export type IconName = keyof typeof paths;

/// A picture beside a text that says the same.
export function Icon({ name }: { name: IconName }) {
  return (
    <svg class="icon" viewBox="0 0 24 24" aria-hidden="true" focusable="false"><path d={paths[name]} /></svg>
  );
}
