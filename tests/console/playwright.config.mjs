// Where the console is, is told by the environment; without it a mock server is started.
//   CONSOLE_URL           an eventd (http://127.0.0.1:8780) whose queues the tests may write to
//   CONSOLE_ADMIN_TOKEN, CONSOLE_READ_TOKEN   tokens of these roles there
//   CONSOLE_DIST          the built page that the mock serves (default: web/console/dist)
//   CHROMIUM              the browser (default: /usr/bin/chromium)
import { defineConfig } from "@playwright/test";

export default defineConfig({
  testDir: ".",
  testMatch: "*.test.ts",
  outputDir: process.env.CONSOLE_RESULTS ?? "node_modules/.results",
  reporter: "list",
  workers: 2,
  fullyParallel: true,
  forbidOnly: true,
  retries: 0,
  // Only to end what hangs; nothing is decided by how long it takes.
  timeout: 180_000,
  expect: { timeout: 60_000 },
  use: {
    viewport: { width: 1280, height: 800 },
    colorScheme: "light",
    locale: "en-GB",
    timezoneId: "Europe/Berlin",
    launchOptions: {
      executablePath: process.env.CHROMIUM ?? "/usr/bin/chromium",
      args: [
        "--headless",
        "--no-sandbox",
        "--disable-gpu",
        "--disable-quic",
        "--no-first-run",
        "--disable-background-networking",
        "--disable-component-update",
        "--disable-sync",
      ],
    },
  },
});
