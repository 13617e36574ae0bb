// What is looked at is in the address, so that a reload, a link and "back" show the same.
import { expect, goTo, openQueue, pageOnly, rows, rowsWith, test } from "./support/test";

test("The address has queue, kinds, search and the open event", async ({
  page,
  enter,
  produce,
  marker,
}) => {
  await enter();
  await goTo(page, "Events");
  await openQueue(page, produce, "31");
  const id = await produce.sendLegacy(`${marker} sought & found`, "31");
  await produce.send("serverstatus", { server: marker, state: 1 }, "31");
  await expect(rowsWith(page, marker)).toHaveCount(2);
  const legacy = page.getByRole("button", { name: "legacy" });
  await legacy.click();
  const search = page.getByRole("searchbox");
  await search.fill(`${marker} sought &`);
  await rowsWith(page, marker).click();
  const address = `#/events/31/${id}?kinds=legacy&search=${marker}+sought+%26`;
  await expect.poll(() => new URL(page.url()).hash).toBe(address);

  await page.reload();
  await expect(page.getByTestId("event-string")).toContainText(`${marker} sought`);
  await expect(page.getByRole("combobox", { name: "Queue" })).toHaveValue("31");
  await expect(search).toHaveValue(`${marker} sought &`);
  await expect(legacy).toHaveAttribute("aria-pressed", "true");
  await expect(rows(page)).toHaveText([/sought/]);
});

test("A link opens a queue with its filters", async ({ page, enter, produce, marker }) => {
  await produce.addQueue("31");
  await produce.sendLegacy(`${marker} one`, "31");
  await produce.send("serverstatus", { server: `${marker} two`, state: 1 }, "31");
  await enter();
  await page.goto(`/#/events/31?kinds=serverstatus&search=${marker}`);
  await expect(rows(page)).toHaveText([/two/]);
  await page.goto(`/#/events/31?kinds=nonsense&search=${marker}`);
  await expect(rows(page)).toHaveText([/two/, /one/]);
});

test("Back and forward go through what was looked at", async ({ page, enter, produce, marker }) => {
  await enter();
  await goTo(page, "Events");
  await openQueue(page, produce, "31");
  await produce.sendLegacy(marker, "31");
  const search = page.getByRole("searchbox");
  for (const text of [marker.slice(0, 3), marker]) {
    await search.fill(text);
    await expect(page).toHaveURL(new RegExp(`search=${text}$`));
  }
  await rowsWith(page, marker).click();
  await expect(page.getByTestId("event-string")).toContainText(marker);

  const queue = page.getByRole("combobox", { name: "Queue" });
  await page.goBack();
  await expect(page.getByTestId("event-string")).toHaveCount(0);
  await expect(search).toHaveValue(marker);
  await page.goBack();
  await expect(search).toHaveValue("");
  await expect(queue).toHaveValue("31");
  await page.goBack();
  await expect(queue).toHaveValue("0");
  await page.goForward();
  await page.goForward();
  await expect(queue).toHaveValue("31");
  await expect(search).toHaveValue(marker);
});

test("The events are as they were left when one comes back to them", async ({
  page,
  enter,
  produce,
  marker,
}) => {
  await enter();
  await goTo(page, "Events");
  await openQueue(page, produce, "31");
  await page.getByRole("searchbox").fill(marker);
  await goTo(page, "Overview");
  await goTo(page, "Events");
  await expect(page.getByRole("combobox", { name: "Queue" })).toHaveValue("31");
  await expect(page.getByRole("searchbox")).toHaveValue(marker);
});

test("A queue that is not there is told, and not asked for", pageOnly, async ({ page, enter }) => {
  await enter();
  const asked: string[] = [];
  page.on("request", (request) => asked.push(request.url()));
  await page.goto("/#/events/99/7");
  await expect(page.getByRole("alert")).toContainText("There is no queue 99 here.");
  await expect(page.getByRole("complementary")).toHaveCount(0);
  await page.getByRole("link", { name: "The global queue" }).click();
  await expect(page.getByText("live", { exact: true })).toBeVisible();
  await expect(page.getByRole("alert")).toHaveCount(0);
  expect(asked.filter((url) => url.includes("/queues/99/"))).toEqual([]);
});

test("A queue is shown as soon as there is one", async ({ page, enter, produce, marker }) => {
  const dsid = String(1000 + Math.floor(Math.random() * 1e6));
  await enter();
  await page.goto(`/#/events/${dsid}`);
  await expect(page.getByRole("alert")).toContainText(`There is no queue ${dsid} here.`);
  await produce.addQueue(dsid);
  await produce.sendLegacy(marker, dsid);
  await expect(rowsWith(page, marker)).toBeVisible();
  await expect(page.getByRole("alert")).toHaveCount(0);
});
