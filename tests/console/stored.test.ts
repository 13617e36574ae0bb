// What the list says of events beyond those that it holds, and of those that are stored no more.
import { startMock } from "./support/server";
import { expect, goTo, openQueue, pageOnly, rows, rowsWith, test } from "./support/test";

const legacies = (count: number, payload: string) =>
  JSON.stringify(
    Array.from({ length: count }, (_, i) => ({
      kind: "legacy",
      fields: { payload: `${payload} ${i}.` },
    })),
  );

test("A search finds what the list does not hold", async ({ page, enter, produce, marker }) => {
  await produce.addQueue("41");
  await produce.sendLegacy(`${marker} needle`, "41");
  await produce.sendText(legacies(1_600, `${marker} hay`), "41");
  await enter();
  await page.goto("/#/events/41");
  await expect(rowsWith(page, `${marker} hay 1599.`)).toBeVisible();
  await page.getByRole("searchbox").fill(`${marker} needle`);
  await expect(rows(page)).toHaveText([/needle/]);
  await expect(page.getByText("nothing older is stored")).toBeVisible();
  await page.getByRole("searchbox").fill(`${marker} pitchfork`);
  await expect(page.getByText("No event in the queue matches.")).toBeVisible();
});

test("A search goes through answers that were cut short", pageOnly, async ({
  page,
  enter,
  produce,
  marker,
}) => {
  await produce.addQueue("47");
  await produce.sendText(legacies(1_600, marker), "47");
  await enter();
  await page.route("**/queues/47/events?*limit=1000*", (route) =>
    route.continue({ url: route.request().url().replace("limit=1000", "limit=70") }),
  );
  await page.goto(`/#/events/47?search=${marker}+999.`);
  await expect(rows(page)).toHaveText([/999\./]);
  await expect(page.getByTestId("count")).toHaveText("1 of 1\u202f600 events");
});

test("A filter finds kinds that the list does not hold", async ({
  page,
  enter,
  produce,
  marker,
}) => {
  await produce.addQueue("42");
  await produce.send("serverstatus", { server: `${marker} rare`, state: 1 }, "42");
  await produce.sendText(legacies(1_600, marker), "42");
  await enter();
  await page.goto("/#/events/42");
  await expect(rowsWith(page, `${marker} 1599.`)).toBeVisible();
  await page.getByRole("button", { name: "serverstatus" }).click();
  await expect(rowsWith(page, `${marker} rare`)).toBeVisible();
  await expect(page.getByTestId("count")).toHaveText("1 event");
});

test("A filter goes back step by step where the server cannot give all at once", pageOnly, async ({
  page,
  enter,
  produce,
  marker,
}) => {
  await produce.addQueue("48");
  await produce.send("serverstatus", { server: `${marker} rare`, state: 1 }, "48");
  await produce.sendText(legacies(1_600, marker), "48");
  await enter();
  await page.route("**/queues/48/events?*type=*", (route) => route.fulfill({ status: 503 }));
  await page.goto("/#/events/48?kinds=serverstatus");
  await page.getByRole("button", { name: "The server did not answer; try again" }).click();
  await expect(rowsWith(page, `${marker} rare`)).toBeVisible();
  await expect(page.getByTestId("count")).toHaveText("1 of 1\u202f601 events");
});

test("A search goes back step by step, and an id is looked up", pageOnly, async ({ page }) => {
  const mock = await startMock("--events", "20000", "--first-id", "700000001");
  try {
    page.removeAllListeners("request"); // the page comes from another server here
    await page.goto(`${mock.url}/#token=${mock.read}`);
    await goTo(page, "Events");
    await page.getByRole("searchbox").fill("700000005");
    await expect(rows(page)).toHaveText([/^700000005/]);
    const further = page.getByRole("button", { name: "Look further back" });
    await expect(further).toBeVisible();
    await expect(page.getByText(/^looked through down to id 700/)).toBeVisible();

    await page.getByRole("searchbox").fill("nothing like it");
    await expect(page.getByText("No event matches so far.")).toBeVisible();
    await further.click();
    await expect(page.getByText("No event in the queue matches.")).toBeVisible();
    await expect(page.getByText("nothing older is stored")).toBeVisible();
    await expect(page.getByTestId("count")).toHaveText("0 of 17\u202f777 events");
  } finally {
    await mock.stop();
  }
});

test("A search that fails is told, and tried again", pageOnly, async ({
  page,
  enter,
  produce,
  marker,
}) => {
  await produce.addQueue("43");
  await produce.sendText(legacies(1_200, marker), "43");
  await enter();
  await page.goto("/#/events/43");
  await expect(rowsWith(page, `${marker} 1199.`)).toBeVisible();
  await page.route("**/queues/43/events?*", (route) => route.fulfill({ status: 503 }));
  await page.getByRole("searchbox").fill(`${marker} 5.`);
  const again = page.getByRole("button", { name: "The server did not answer; try again" });
  await expect(again).toBeVisible();
  await page.unroute("**/queues/43/events?*");
  await again.click();
  await expect(rowsWith(page, `${marker} 5.`)).toBeVisible();
});

test("Events that were consumed are marked", async ({ page, enter, produce, marker }) => {
  await enter();
  await goTo(page, "Events");
  await openQueue(page, produce, "44");
  await produce.sendLegacy(`${marker} first`, "44");
  const id = await produce.sendLegacy(`${marker} second`, "44");
  await produce.sendLegacy(`${marker} third`, "44");
  await page.getByRole("searchbox").fill(marker);
  await expect(rows(page)).toHaveText([/third/, /second/, /first/]);
  await produce.remove(id, "44");
  await expect(rowsWith(page, "deleted")).toHaveText([/second/]);
  await expect(page.getByText(", 1 deleted since")).toBeVisible();
  await rowsWith(page, "second").click();
  const panel = page.getByRole("complementary");
  await expect(panel).toContainText("Deleted: the queue does not have it any more.");
  await expect(panel.getByTestId("event-string")).toContainText(`${marker} second`);
  await rowsWith(page, "third").click();
  await expect(panel.getByTestId("event-string")).toContainText(`${marker} third`);
  await expect(panel).not.toContainText("Deleted");
});

test("A consumer that empties the queue is seen at work", async ({
  page,
  enter,
  produce,
  marker,
}) => {
  await enter();
  await goTo(page, "Events");
  await openQueue(page, produce, "45");
  const ids = await produce.sendText(legacies(3, marker), "45");
  await expect(rowsWith(page, marker)).toHaveCount(3);
  await expect(rowsWith(page, "deleted").filter({ hasText: marker })).toHaveCount(0);
  for (const id of ids) await produce.remove(id, "45");
  await expect(rowsWith(page, marker).filter({ hasText: "deleted" })).toHaveCount(3);
});

test("The list has all that are stored only where it says so", async ({
  page,
  enter,
  produce,
  marker,
  line,
}) => {
  await enter();
  await goTo(page, "Events");
  await openQueue(page, produce, "46");
  const id = await produce.sendLegacy(`${marker} one`, "46");
  await produce.sendLegacy(`${marker} two`, "46");
  const all = page.getByText("all that are stored");
  await expect(all).toBeVisible();
  await produce.remove(id, "46");
  await expect(rowsWith(page, "deleted").filter({ hasText: marker })).toHaveText([/one/]);
  await expect(all).toBeVisible();
  line.cut();
  await expect(page.getByText("interrupted, trying again")).toBeVisible();
  await expect(all).toHaveCount(0);
});

test("A list that lacks what is stored begins anew", pageOnly, async ({ page }) => {
  const mock = await startMock("--events", "5"); // the first of them is in another queue
  try {
    page.removeAllListeners("request"); // the page comes from another server here
    await page.goto(`${mock.url}/#token=${mock.read}`);
    await goTo(page, "Events");
    await expect(page.getByText("all that are stored")).toBeVisible();
    const again = page.waitForRequest("**/queues/0/events/stream");
    await page.route("**/queues/0/events?after=0&limit=1", async (route) => {
      const response = await route.fetch();
      const { events } = await response.json();
      const json = { events: [{ ...events[0], id: 1 }], last: 1 };
      await route.fulfill({ response, json });
      await page.unroute("**/queues/0/events?after=0&limit=1");
    });
    await fetch(`${mock.url}/v1/queues/0/events/2`, {
      method: "DELETE",
      headers: { Authorization: `Bearer ${mock.admin}` },
    });
    await again;
    await expect(page.getByTestId("count")).toHaveText("3 events");
    await expect(page.getByText("all that are stored")).toBeVisible();
  } finally {
    await mock.stop();
  }
});
