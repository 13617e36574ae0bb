import { startMock } from "./support/server";
import { expect, goTo, openQueue, pageOnly, rows, rowsWith, test } from "./support/test";

test.describe("The list of events", () => {
  test.beforeEach(async ({ page, enter }) => {
    await enter();
    await goTo(page, "Events");
    await expect(page.getByText("live", { exact: true })).toBeVisible();
  });

  test("shows events as they are stored, newest first", async ({ page, produce, marker }) => {
    await produce.sendLegacy(`${marker} first`);
    await expect(rowsWith(page, `${marker} first`)).toBeVisible();
    await produce.sendLegacy(`${marker} second`);
    await expect(rowsWith(page, marker)).toHaveText([/second/, /first/]);
  });

  test("is filtered by kind", async ({ page, produce, marker }) => {
    await produce.sendLegacy(marker);
    await produce.send("serverstatus", { server: marker, state: 1 });
    await expect(rowsWith(page, marker)).toHaveCount(2);
    await page.getByRole("button", { name: "serverstatus" }).click();
    await expect(rowsWith(page, marker)).toHaveText([/serverstatus/]);
    await page.getByRole("button", { name: "legacy" }).click();
    await expect(rowsWith(page, marker)).toHaveCount(2);
    await page.getByRole("button", { name: "all kinds" }).click();
    await expect(rowsWith(page, marker)).toHaveCount(2);
  });

  test("is filtered by text, in any case of letters", async ({ page, produce, marker }) => {
    await produce.sendLegacy(`${marker} Apples`);
    await produce.sendLegacy(`${marker} pears`);
    await expect(rowsWith(page, marker)).toHaveCount(2);
    await page.getByRole("searchbox").fill(`${marker} apples`);
    await expect(rows(page)).toHaveText([/Apples/]);
    await expect(page.getByTestId("count")).toHaveText(/^1 of /);
    await page.getByRole("searchbox").fill(`${marker} plums`);
    await expect(page.getByText("No event in the queue matches.")).toBeVisible();
  });

  test("finds an event by its id", async ({ page, produce, marker }) => {
    const id = await produce.sendLegacy(marker);
    await expect(rowsWith(page, marker)).toBeVisible();
    await page.getByRole("searchbox").fill(id);
    await expect(rowsWith(page, marker)).toBeVisible();
  });

  test("holds while it is paused and then goes on", async ({ page, produce, marker }) => {
    await page.getByRole("button", { name: "Pause" }).click();
    await produce.sendLegacy(marker);
    await expect(page.getByText(/^paused, \d+ new$/)).toBeVisible();
    await expect(rowsWith(page, marker)).toHaveCount(0);
    await page.getByRole("button", { name: "Go on" }).click();
    await expect(rowsWith(page, marker)).toHaveCount(1);
  });

  test("keeps what is read in its place when events arrive", async ({ page, produce, marker }) => {
    await openQueue(page, produce, "21");
    await produce.sendText(
      JSON.stringify(
        Array.from({ length: 60 }, (_, i) => ({
          kind: "legacy",
          fields: { payload: `${marker}-${i}.` },
        })),
      ),
      "21",
    );
    await page.getByRole("searchbox").fill(marker);
    await expect(page.getByTestId("count")).toHaveText(/^60 /);
    await page.getByRole("grid").evaluate((grid) => (grid.scrollTop = 600));
    const row = rowsWith(page, `${marker}-30.`);
    await expect(row).toBeVisible();
    const before = await row.boundingBox();
    await produce.sendLegacy(`${marker} more`, "21");
    await expect(page.getByTestId("count")).toHaveText(/^61 /);
    await expect.poll(async () => (await row.boundingBox())?.y).toBe(before?.y);
  });

  test("is bounded, and only the rows in sight are in the page", async ({
    page,
    produce,
    marker,
  }) => {
    await openQueue(page, produce, "22");
    for (let batch = 0; batch < 5; ++batch) {
      const events = Array.from({ length: 500 }, (_, i) => ({
        kind: "legacy",
        fields: { payload: `${marker} ${batch}-${i}.` },
      }));
      await produce.sendText(JSON.stringify(events), "22");
    }
    await expect(rowsWith(page, `${marker} 4-499.`)).toBeVisible();
    await expect(page.getByTestId("count")).toHaveText("2\u202f000 events");
    expect(await rows(page).count()).toBeLessThan(80);
    await page.getByRole("button", { name: "Older events" }).click();
    await expect(page.getByTestId("count")).not.toHaveText("2\u202f000 events");
    await page.getByRole("searchbox").fill(`${marker} 0-1.`);
    await expect(rowsWith(page, `${marker} 0-1.`)).toBeVisible();
  });

  test("is not told twice what it has", async ({ page, produce, marker, line }) => {
    await page.getByRole("searchbox").fill(marker);
    await produce.sendLegacy(`${marker} one`);
    await expect(rows(page)).toHaveText([/one/]);
    line.cut();
    await expect(page.getByText("interrupted, trying again")).toBeVisible();
    await produce.sendLegacy(`${marker} two`);
    line.mend();
    await expect(rows(page)).toHaveText([/two/, /one/]);
  });

  test("is that of one queue", async ({ page, produce, marker }) => {
    await produce.addQueue("7");
    await produce.sendLegacy(`${marker} here`);
    await produce.sendLegacy(`${marker} there`, "7");
    await expect(rowsWith(page, marker)).toHaveText([/here/]);
    await expect(page.getByRole("combobox", { name: "Queue" })).toContainText("7");
    await page.getByRole("combobox", { name: "Queue" }).selectOption("7");
    await expect(rowsWith(page, marker)).toHaveText([/there/]);
    await produce.sendLegacy(`${marker} also there`, "7");
    await expect(rowsWith(page, marker)).toHaveText([/also there/, /there/]);
    await rowsWith(page, "also there").click();
    await expect(page.getByRole("complementary")).toContainText("data selection 7");
  });

  test("says why the server refuses it", pageOnly, async ({ page, line }) => {
    const detail = "1000 readers wait already.";
    await page.route("**/stream*", (route) => route.fulfill({ status: 429, json: { detail } }));
    line.cut();
    line.mend();
    await expect(page.getByText(`interrupted: ${detail}`)).toBeVisible();
  });
});

test.describe("One event", () => {
  test("is shown with its fields and its event string", async ({
    page,
    enter,
    produce,
    marker,
  }) => {
    const id = await produce.send("activity", { action: 3, time: 100, severity: 2, msg: marker });
    await enter();
    await goTo(page, "Events");
    await rowsWith(page, marker).click();
    const panel = page.getByRole("complementary", { name: `Event ${id}` });
    await expect(panel.getByTestId("event-string")).toContainText(
      `{ACTIVITYEVENT{version:1;action:3;time:100;severity:2;msg:${marker};}}`,
    );
    await expect(panel.getByText("severity", { exact: true })).toBeVisible();
    await expect(panel.getByText("1970-01-01 00:01:40 UTC")).toBeVisible();
  });

  test("is copied as it is stored", async ({ page, enter, produce, marker, context }) => {
    await context.grantPermissions(["clipboard-read", "clipboard-write"]);
    const id = await produce.sendLegacy(`${marker} \u202e <b>`);
    await enter();
    await page.goto(`/#/events/0/${id}`);
    await page.getByRole("button", { name: "Copy" }).click();
    await expect(page.getByRole("button", { name: "Copied" })).toBeVisible();
    const copied = await page.evaluate(() => navigator.clipboard.readText());
    expect(copied).toContain(`{payload:${marker} \u202e <b>;}}`);
  });

  test("is reached by its address", async ({ page, enter, produce, marker }) => {
    const id = await produce.sendLegacy(marker);
    await enter();
    await page.goto(`/#/events/0/${id}`);
    await expect(page.getByTestId("event-string")).toContainText(marker);
    await page.goto("/#/events/0/999999999999");
    await expect(page.getByText("This event is not in the queue (any more).")).toBeVisible();
  });

  test("is text, whatever it holds", async ({ page, enter, produce, marker }) => {
    const evil = `${marker}<img src=x onerror="window.taken=1"></pre><script>window.taken=1</script>`;
    await enter();
    await goTo(page, "Events");
    await produce.sendLegacy(evil);
    await expect(rowsWith(page, evil)).toBeVisible();
    await rowsWith(page, evil).click();
    await expect(page.getByTestId("event-string")).toContainText(evil);
    await goTo(page, "Overview");
    await expect(page.getByRole("link", { name: evil })).toBeVisible();
    await expect(page.locator("img")).toHaveCount(0);
    expect(await page.evaluate(() => "taken" in window)).toBe(false);
  });

  test("shows characters that would hide or turn others", async ({
    page,
    enter,
    produce,
    marker,
  }) => {
    await enter();
    await goTo(page, "Events");
    await produce.sendLegacy(`${marker} a\u202eb\u0007c`);
    await expect(rowsWith(page, `${marker} a<U+202E>b\u2407c`)).toBeVisible();
  });

  test("has numbers of 64 bits exactly", async ({ page, enter, produce, marker }) => {
    const fields =
      `{"server":"${marker}","capacity":18446744073709551615,"capacityphys":9007199254740993,` +
      `"used":9223372036854775807,"usedphys":1}`;
    await produce.sendText(`{"kind":"capacity","fields":${fields}}`);
    await enter();
    await goTo(page, "Events");
    await rowsWith(page, marker).click();
    const panel = page.getByRole("complementary");
    const grouped = (digits: string) => digits.replace(/\B(?=(\d{3})+$)/g, "\u202f");
    for (const exact of ["18446744073709551615", "9007199254740993", "9223372036854775807"]) {
      await expect(panel.getByText(grouped(exact), { exact: true })).toBeVisible();
    }
  });
});

test("The list says when it holds no more", pageOnly, async ({ page }) => {
  const mock = await startMock("--events", "23000");
  try {
    page.removeAllListeners("request"); // the page comes from another server here
    await page.goto(`${mock.url}/#token=${mock.read}`);
    await goTo(page, "Events");
    const older = page.getByRole("button", { name: "Older events" });
    for (let count = 500; count < 20_000; ) {
      await older.click();
      await expect(older.or(page.getByText("the list holds no more"))).toBeEnabled();
      count = Number((await page.getByTestId("count").innerText()).replace(/\D/g, ""));
    }
    await expect(page.getByTestId("count")).toHaveText("20\u202f000 events");
    await expect(older).toHaveCount(0);
  } finally {
    await mock.stop();
  }
});

test("Ids beyond 2^53 are told apart, followed and opened", pageOnly, async ({ page, watch }) => {
  const mock = await startMock("--events", "0", "--first-id", "9007199254740992");
  try {
    watch.violations.length = 0;
    page.removeAllListeners("request"); // the page comes from another server here
    const send = (payload: string) =>
      fetch(`${mock.url}/v1/queues/0/events`, {
        method: "POST",
        headers: { Authorization: `Bearer ${mock.admin}` },
        body: JSON.stringify({ kind: "legacy", fields: { payload } }),
      });
    await send("first");
    await page.goto(`${mock.url}/#token=${mock.read}`);
    await expect(page.getByTestId("state")).toHaveText("connected");
    await goTo(page, "Events");
    await expect(rows(page)).toHaveText([/9007199254740992.*first/]);
    await send("second");
    await expect(rows(page)).toHaveText([/9007199254740993.*second/, /9007199254740992.*first/]);
    await rowsWith(page, "second").click();
    await expect(page.getByRole("heading", { name: "Event 9007199254740993" })).toBeVisible();
    await expect(page.getByTestId("event-string")).toContainText("payload:second");
  } finally {
    await mock.stop();
  }
});
