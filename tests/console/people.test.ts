import { readFileSync } from "node:fs";
import { createRequire } from "node:module";
import type { Page } from "@playwright/test";
import { expect, goTo, pageOnly, rows, rowsWith, test } from "./support/test";

const axe = readFileSync(createRequire(import.meta.url).resolve("axe-core/axe.min.js"), "utf8");

interface Breach {
  id: string;
  impact: string;
  nodes: { target: string[]; failureSummary: string }[];
}

async function breaches(page: Page): Promise<string[]> {
  await page.evaluate(axe);
  const found = await page.evaluate<Breach[]>(async () => {
    // @ts-expect-error axe was brought along by the test
    const report = await axe.run();
    return report.violations;
  });
  return found.flatMap(({ id, impact, nodes }) =>
    nodes.map((node) => `${impact} ${id} ${node.target.join()} ${node.failureSummary}`),
  );
}

const views = ["Overview", "Events", "Queues", "Limits", "Check"];

for (const colours of ["light", "dark"] as const) {
  test(
    `Every view is open to all people in ${colours} colours`,
    pageOnly,
    async ({ page, enter, produce, marker }) => {
      await page.emulateMedia({ colorScheme: colours });
      const id = await produce.sendLegacy(marker);
      await page.goto("/");
      await expect(page.getByLabel("Token")).toBeVisible();
      expect(await breaches(page)).toEqual([]);
      await enter();
      for (const view of views) {
        await goTo(page, view);
        expect(await breaches(page), view).toEqual([]);
      }
      await page.getByRole("button", { name: "Look for damage" }).click();
      await expect(page.getByTestId("verdict")).toBeVisible();
      expect(await breaches(page), "a check").toEqual([]);
      await page.goto(`/#/events/0/${id}`);
      await expect(page.getByTestId("event-string")).toBeVisible();
      expect(await breaches(page), "an event").toEqual([]);
      await page.getByRole("button", { name: "Help and shortcuts" }).click();
      expect(await breaches(page), "the help").toEqual([]);
    },
  );
}

test("Trouble is open to all people", pageOnly, async ({ page, enter, line }) => {
  await enter();
  line.cut();
  await expect(page.getByTestId("state")).toHaveText("no answer");
  expect(await breaches(page)).toEqual([]);
});

test("What finds breaches finds one", pageOnly, async ({ page, enter }) => {
  await enter();
  await page.evaluate(() => {
    const image = document.createElement("img");
    image.src = "data:image/gif;base64,R0lGODlhAQABAAAAACw=";
    document.querySelector("main")?.append(image);
  });
  expect((await breaches(page)).join()).toContain("image-alt");
});

test("Everything is done by keyboard alone", async ({ page, produce, marker, server }) => {
  await produce.sendLegacy(`${marker} older`);
  await produce.sendLegacy(`${marker} newer`);
  await page.goto("/");
  await expect(page.getByLabel("Token")).toBeFocused();
  await page.keyboard.type(server.admin);
  await page.keyboard.press("Enter");
  await expect(page.getByTestId("state")).toHaveText("connected");

  await page.keyboard.press("/");
  await expect(page.getByRole("searchbox")).toBeFocused();
  await page.keyboard.type(marker);
  await expect(rows(page)).toHaveCount(2);
  for (let i = 0; i < 20; ++i) {
    if (
      await rows(page)
        .first()
        .evaluate((row) => row === document.activeElement)
    )
      break;
    await page.keyboard.press("Tab");
  }
  await expect(rows(page).first()).toBeFocused();
  await page.keyboard.press("ArrowDown");
  await expect(rowsWith(page, "older")).toBeFocused();
  await page.keyboard.press("Enter");
  await expect(page.getByRole("complementary").getByRole("heading").first()).toBeFocused();
  await expect(page.getByTestId("event-string")).toContainText(`${marker} older`);
  await page.keyboard.press("Escape");
  await expect(page.getByRole("complementary")).toHaveCount(0);
  await expect(rowsWith(page, "older")).toBeFocused();

  await page.keyboard.press("p");
  await expect(page.getByText(/^paused, \d+ new$/)).toBeVisible();
  await page.keyboard.press("?");
  await expect(page.getByRole("dialog", { name: "Help" })).toBeVisible();
  await page.keyboard.press("Escape");
  await expect(page.getByRole("dialog")).toHaveCount(0);
  await page.keyboard.press("3");
  await expect(page.getByRole("heading", { name: "Queues" })).toBeVisible();
});

test("The list is walked through beside an open event", async ({
  page,
  enter,
  produce,
  marker,
}) => {
  await enter();
  await goTo(page, "Events");
  await produce.sendLegacy(`${marker} older`);
  await produce.sendLegacy(`${marker} newer`);
  await page.getByRole("searchbox").fill(marker);
  await rowsWith(page, "newer").click();
  await expect(page.getByTestId("event-string")).toContainText(`${marker} newer`);
  await page.keyboard.press("ArrowDown");
  await expect(page.getByTestId("event-string")).toContainText(`${marker} older`);
  await expect(rowsWith(page, "older")).toBeFocused();
});

test("The browser's Back closes an event", async ({ page, enter, produce, marker }) => {
  await enter();
  await goTo(page, "Events");
  await produce.sendLegacy(marker);
  await rowsWith(page, marker).click();
  await expect(page.getByTestId("event-string")).toContainText(marker);
  await page.goBack();
  await expect(page.getByTestId("event-string")).toHaveCount(0);
  await expect(rowsWith(page, marker)).toBeVisible();
});

test("Single keys do nothing when they are switched off", pageOnly, async ({ page, enter }) => {
  await enter();
  await page.keyboard.press("?");
  await page.getByLabel("Shortcuts of single keys").uncheck();
  await page.getByRole("button", { name: "Close" }).click();
  await page.keyboard.press("2");
  await page.keyboard.press("?");
  await expect(page.getByRole("dialog")).toHaveCount(0);
  await expect(page.getByRole("link", { name: "Overview" })).toHaveAttribute(
    "aria-current",
    "page",
  );
});

test("What has the focus is seen to have it", pageOnly, async ({ page, enter }) => {
  await enter();
  // Browsers disagree about where the first Tab begins.
  await page.getByRole("link", { name: "Overview" }).focus();
  await page.keyboard.press("Shift+Tab");
  await expect(page.getByText("Skip to the content")).toBeFocused();
  await page.keyboard.press("Enter");
  await expect(page.getByRole("main")).toBeFocused();
  await page.keyboard.press("Tab");
  const outline = await page.evaluate(
    () => getComputedStyle(document.activeElement as Element).outlineStyle,
  );
  expect(outline).toBe("solid");
});

const brightness = (page: Page) =>
  page.evaluate(() => {
    const [red = 0, green = 0, blue = 0] =
      getComputedStyle(document.body).backgroundColor.match(/\d+/g)?.map(Number) ?? [];
    return (red + green + blue) / 3;
  });

test("Colours follow the system until they are chosen", pageOnly, async ({ page, enter }) => {
  await page.emulateMedia({ colorScheme: "dark" });
  await enter();
  expect(await brightness(page)).toBeLessThan(60);
  await page.getByRole("button", { name: "Theme: auto" }).click();
  await expect.poll(() => brightness(page)).toBeGreaterThan(200);
  await page.reload();
  await expect(page.getByRole("button", { name: "Theme: light" })).toBeVisible();
  expect(await brightness(page)).toBeGreaterThan(200);
  await page.getByRole("button", { name: "Theme: light" }).click();
  await expect.poll(() => brightness(page)).toBeLessThan(60);
});

const small = {
  "A phone": { width: 360, height: 740 },
  "A window at 200 %": { width: 640, height: 400 },
};

for (const [what, size] of Object.entries(small)) {
  test(
    `${what} shows every view without scrolling sideways`,
    pageOnly,
    async ({ page, enter, produce, marker }) => {
      await page.setViewportSize(size);
      const id = await produce.sendLegacy(`${marker} ${"long".repeat(60)}`);
      const overhang = () => page.evaluate(() => document.documentElement.scrollWidth - innerWidth);
      await page.goto("/");
      await expect(page.getByLabel("Token")).toBeVisible();
      expect(await overhang()).toBeLessThanOrEqual(0);
      await enter();
      for (const view of views) {
        await goTo(page, view);
        expect(await overhang(), view).toBeLessThanOrEqual(0);
      }
      await page.goto(`/#/events/0/${id}`);
      await expect(page.getByTestId("event-string")).toContainText(marker);
      expect(await overhang(), "an event").toBeLessThanOrEqual(0);
      await page.getByRole("button", { name: "Close" }).click();
      await expect(page.getByTestId("event-string")).toHaveCount(0);
    },
  );
}

test("Times tell their zone", pageOnly, async ({ page, enter }) => {
  await enter();
  await goTo(page, "Events");
  const heading = page.getByRole("columnheader", { name: /^time/ });
  await expect(heading).toHaveText("time (Berlin)");
  await expect(page.getByRole("button", { name: "Times: Europe/Berlin" })).toHaveText("Berlin");
  await page.keyboard.press("u");
  await expect(heading).toHaveText("time (UTC)");
  await page.setViewportSize(small["A phone"]);
  await page.getByRole("button", { name: "Times: UTC" }).click();
  await expect(page.getByRole("button", { name: "Times: Europe/Berlin" })).toBeVisible();
});

test("A table that is wider than a phone shows where there is more", pageOnly, async ({
  page,
  enter,
}) => {
  await page.setViewportSize(small["A phone"]);
  await enter();
  await goTo(page, "Queues");
  const table = page.getByRole("region", { name: "Table of the queues" });
  const signs = () =>
    table.evaluate((region) =>
      ["::before", "::after"].map((edge) => {
        const { content, display } = getComputedStyle(region.parentElement as Element, edge);
        return display === "none" ? "" : content;
      }),
    );
  await expect.poll(signs).toEqual(["", '"›"']);
  await table.evaluate((region) => (region.scrollLeft = 60));
  await expect.poll(signs).toEqual(['"‹"', '"›"']);
  await table.evaluate((region) => (region.scrollLeft = region.scrollWidth));
  await expect.poll(signs).toEqual(['"‹"', ""]);
  await page.setViewportSize({ width: 1600, height: 800 });
  await expect.poll(signs).toEqual(["", ""]);
});

test("The page's policy is in force, and a breach of it is noticed", async ({ page, watch }) => {
  const response = await page.goto("/");
  const policy = response?.headers()["content-security-policy"] ?? "";
  expect(policy).toContain("default-src 'none'");
  expect(policy).toContain("frame-ancestors 'none'");
  await page.evaluate(() => {
    document.body.insertAdjacentHTML("beforeend", '<b onclick="window.taken = 1">x</b>');
    document.querySelector<HTMLElement>("body > b")?.click();
  });
  expect(await page.evaluate(() => "taken" in window)).toBe(false);
  await expect.poll(() => watch.violations.join()).toContain("policy: script-src");
  watch.violations.length = 0;
});
