// The kinds of events, in the order of their numbers.

export const kindNames: readonly string[] = [
  "legacy",
  "imagerep",
  "lsustatus",
  "serverstatus",
  "capacity",
  "abilities",
  "activity",
  "audit",
  "kelp",
];
