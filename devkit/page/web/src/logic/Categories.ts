/// The kinds of websites that the filter knows, in the groups in which the page shows them. Those of "disturbing" and
/// "shopping" can also be decided together by the plug-in's own groups.
export const categoryGroups = {
  adult: ["adult", "dating", "gambling", "alcohol_and_tobacco", "drugs", "lingerie", "violence", "weapons", "hate"],
  disturbing: ["abortion", "cults", "disturbing", "occults", "selfharm"],
  harmful: ["adserving", "anonymizers", "hacking", "illegal", "potentially_unwanted", "scam", "spam", "warez"],
  social: ["blogs", "chat", "forum", "social_networking", "webmail"],
  shopping: ["auctions", "banking", "paymentservice", "shopping"],
  leisure: [
    "entertainment", "games", "hobbies", "hunting_and_fishing", "image_and_video", "music", "streaming_media", "travel",
  ],
  tools: [
    "dynamic", "file_sharing", "internet_portals", "redirect", "search_engines", "software_download", "translation",
    "webhosting",
  ],
  other: ["job_search", "military", "news", "religion", "unknown"],
} as const;

export type CategoryGroup = keyof typeof categoryGroups;
export type CategoryKey = (typeof categoryGroups)[CategoryGroup][number];
export type CategoryMap = Readonly<Partial<Record<CategoryKey, boolean>>>;

export const groupNames = Object.keys(categoryGroups) as CategoryGroup[];
export const allCategories: readonly CategoryKey[] = groupNames.flatMap((group) => [...categoryGroups[group]]);

/// What is unsuitable for minors: blocked where a parent sets the filter up for a teenager.
export const blockedForTeens: readonly CategoryKey[] = [
  ...categoryGroups.adult, ...categoryGroups.disturbing, ...categoryGroups.harmful,
];

/// A copy with these categories allowed or blocked.
export function withCategories(map: CategoryMap, keys: readonly CategoryKey[], allowed: boolean): CategoryMap {
  return { ...map, ...Object.fromEntries(keys.map((key) => [key, allowed])) };
}

export function sameCategories(one: CategoryMap, other: CategoryMap): boolean {
  return allCategories.every((key) => one[key] === other[key]);
}
