// Takes the pictures of the manual; tools/console-screenshots starts it.
//   CONSOLE_IMAGES     the folder that takes them
//   CONSOLE_DAY        event strings of one day, as examples/day.events holds them
//   CONSOLE_DATABASE   the database of the eventd that CONSOLE_URL names, to be damaged
import { defineConfig } from "@playwright/test";
import base from "./playwright.config.mjs";

export default defineConfig({
  ...base,
  testDir: "screenshots",
  testMatch: "*.shot.ts",
  workers: 1,
  timeout: 600_000,
});
