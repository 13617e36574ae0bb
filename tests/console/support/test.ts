// What every test starts from: a server, a line to it, and a page that is watched for what it must
// never do.
import { test as base, expect, type Page } from "@playwright/test";
import { Line } from "./line";
import { Producer } from "./producer";
import { findServer, type Server } from "./server";

export { expect };

// Marks a test that would find the same whatever server there is: the build has it passed with the
// mock, and all others with an eventd.
export const pageOnly = { tag: "@page" };

interface Watch {
  violations: string[];
}

interface Fixtures {
  line: Line;
  produce: Producer;
  watch: Watch;
  // Opens the page with the token in its address.
  enter: (token?: string) => Promise<void>;
  marker: string; // a word that no other event holds
}

let count = 0;

export const test = base.extend<Fixtures, { server: Server }>({
  server: [
    // biome-ignore lint/correctness/noEmptyPattern: Playwright reads the pattern
    async ({}, use) => {
      const server = await findServer();
      await use(server);
      await server.stop();
    },
    { scope: "worker" },
  ],
  line: async ({ server }, use) => {
    const line = new Line(new URL(server.url));
    await line.open();
    await use(line);
    await line.close();
  },
  baseURL: async ({ line }, use) => use(line.url),
  produce: async ({ server }, use) => use(new Producer(server)),
  // biome-ignore lint/correctness/noEmptyPattern: Playwright reads the pattern
  marker: async ({}, use) =>
    use(`m${process.pid.toString(36)}${Date.now().toString(36)}x${++count}`),
  watch: [
    async ({ page, line }, use) => {
      const violations = await watchPage(page, line.url);
      await use({ violations });
      await page.unrouteAll({ behavior: "ignoreErrors" }); // answers that nobody waits for any more
      expect(violations, "requests elsewhere, breaches of the policy, errors of scripts").toEqual(
        [],
      );
    },
    { auto: true },
  ],
  enter: async ({ page, server }, use) => {
    await use(async (token = server.admin) => {
      await page.goto(`/#token=${token}`);
      await expect(page.getByTestId("state")).toHaveText("connected");
    });
  },
});

async function watchPage(page: Page, url: string): Promise<string[]> {
  const found: string[] = [];
  page.on("request", (request) => {
    if (!request.url().startsWith(`${url}/`)) found.push(`request to ${request.url()}`);
  });
  page.on("pageerror", (error) => found.push(`error: ${error.message}`));
  page.on("console", (message) => {
    if (message.text().startsWith("policy:")) found.push(message.text());
  });
  await page.addInitScript(() => {
    document.addEventListener("securitypolicyviolation", (event) => {
      console.error(`policy: ${event.violatedDirective} ${event.blockedURI}`);
    });
  });
  return found;
}

export async function goTo(page: Page, view: string): Promise<void> {
  const link = page.getByRole("navigation").getByRole("link", { name: new RegExp(`^${view}`) });
  await link.click();
  await expect(link).toHaveAttribute("aria-current", "page");
}

// The events that the list shows, as far as they are in sight.
export function rows(page: Page) {
  return page.getByRole("grid").getByRole("rowgroup").getByRole("row");
}

// The events in sight that hold a word.
export function rowsWith(page: Page, word: string) {
  return rows(page).filter({ hasText: word });
}

// What comes in great numbers goes to a queue of its own, or it would push away what the tests beside
// look for.
export async function openQueue(page: Page, produce: Producer, dsid: string): Promise<void> {
  await produce.addQueue(dsid);
  const choice = page.getByRole("combobox", { name: "Queue" });
  await expect(choice).toContainText(`data selection ${dsid}`);
  await choice.selectOption(dsid);
  await expect(page.getByText("live", { exact: true })).toBeVisible();
}
