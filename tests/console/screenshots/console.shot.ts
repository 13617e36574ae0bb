import { join } from "node:path";
import type { Browser, Page } from "@playwright/test";
import { Producer } from "../support/producer";
import { expect, goTo, rows, test } from "../support/test";
import { damage } from "./damage";
import { postThePast, Traffic } from "./traffic";

// Milliseconds: how much of the charts there is to be seen.
const watched = Number(process.env.CONSOLE_WATCHED ?? 150_000);

function given(name: string): string {
  const value = process.env[name];
  if (!value) throw new Error(`${name} is not set`);
  return value;
}

const desktop = { viewport: { width: 1280, height: 860 }, deviceScaleFactor: 1.5 };
const phone = { viewport: { width: 390, height: 844 }, deviceScaleFactor: 2, isMobile: true };

async function open(browser: Browser, url: string, token: string, look: object): Promise<Page> {
  const page = await (await browser.newContext(look)).newPage();
  await page.goto(`${url}/#token=${token}`);
  await expect(page.getByTestId("state")).toHaveText("connected");
  return page;
}

async function take(page: Page, name: string, height?: number): Promise<void> {
  await page.mouse.move(0, 0);
  if (height) await page.setViewportSize({ width: desktop.viewport.width, height });
  await page.screenshot({ path: join(given("CONSOLE_IMAGES"), `console-${name}.png`) });
}

async function takeEvent(page: Page): Promise<void> {
  await goTo(page, "Events");
  await page.getByRole("button", { name: "activity" }).click();
  await page.getByRole("button", { name: "capacity" }).click();
  await rows(page).filter({ hasText: "capacity" }).nth(2).click();
  await expect(page.getByTestId("event-string")).toContainText("CAPACITYEVENT");
  await take(page, "event");
}

async function takeCheck(page: Page): Promise<void> {
  await goTo(page, "Check");
  await page.getByRole("button", { name: "Look for damage" }).click();
  await expect(page.getByTestId("verdict")).toContainText("finding");
  await take(page, "check", 560);
}

test("one server", async ({ browser, server }) => {
  test.skip(process.env.CONSOLE_CLUSTER === "1");
  const produce = new Producer(server);
  await postThePast(produce, given("CONSOLE_DAY"));
  const traffic = new Traffic(produce);
  traffic.begin();
  const show = (look: object, token = server.admin) => open(browser, server.url, token, look);
  const light = await show({ ...desktop, colorScheme: "light" });
  const dark = await show({ ...desktop, colorScheme: "dark" });
  const small = await show({ ...phone, colorScheme: "light" }, server.read);
  await light.waitForTimeout(watched);
  await take(light, "light");
  await take(dark, "dark");
  await take(small, "phone");
  await takeEvent(light);
  await traffic.end();
  damage(given("CONSOLE_DATABASE"), (await produce.oldest(40)).slice(20, 23));
  await takeCheck(light);
});

test("a cluster", async ({ browser, server }) => {
  test.skip(process.env.CONSOLE_CLUSTER !== "1");
  const page = await open(browser, server.url, server.admin, { ...desktop, colorScheme: "light" });
  await goTo(page, "Cluster");
  await expect(page.getByText("not reachable")).toBeVisible();
  await take(page, "cluster", 320);
});
