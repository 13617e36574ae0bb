// The parts that need no browser.
import { expect, test } from "@playwright/test";
import { kinds } from "../../web/console/mock/kinds.mjs";
import { compareIntegers, minus, parseJson } from "../../web/console/src/api/json";
import { MessageReader } from "../../web/console/src/api/serverSentEvents";
import { kindNames } from "../../web/console/src/events/kinds";
import { visible } from "../../web/console/src/events/visible";
import {
  bytes,
  duration,
  grouped,
  rateFormat,
  roundDuration,
  shortTime,
} from "../../web/console/src/format";
import { thin } from "../../web/console/src/state/thin";
import { pageOnly } from "./support/test";

test.describe("JSON", pageOnly, () => {
  test("keeps whole numbers beyond 2^53 as their digits", () => {
    const text =
      '{"a":18446744073709551615,"b":-9223372036854775808,"c":9007199254740991,"d":1.5e3}';
    expect(parseJson(text)).toEqual({
      a: "18446744073709551615",
      b: "-9223372036854775808",
      c: 9007199254740991,
      d: 1500,
    });
  });

  test("leaves digits inside of texts alone", () => {
    const value = { a: 'x":18446744073709551615,"', b: "\\", c: "18446744073709551615\\" };
    expect(parseJson(JSON.stringify(value))).toEqual(value);
  });

  test("has ids that are compared and counted exactly", () => {
    expect(compareIntegers("9007199254740993", "9007199254740992")).toBe(1);
    expect(compareIntegers(7, "7")).toBe(0);
    expect(minus("9007199254740993", 1)).toBe("9007199254740992");
    expect(minus(3, 10)).toBe("0");
  });
});

test.describe("Server-sent events", pageOnly, () => {
  const stream =
    ': \n\nid: 7\nevent: event\ndata: {"a":\r\ndata: 1}\r\n\r\nid:8\ndata:x\n\ndata: cut';

  test("are put together wherever the stream was cut", () => {
    for (let cut = 0; cut <= stream.length; ++cut) {
      const reader = new MessageReader();
      const found = [...reader.feed(stream.slice(0, cut)), ...reader.feed(stream.slice(cut))];
      expect(found, `cut at ${cut}`).toEqual([
        { id: "7", data: '{"a":\n1}' },
        { id: "8", data: "x" },
      ]);
    }
  });
});

test("The past is kept the more thinly the longer it is gone", pageOnly, () => {
  const queues = new Map([["all", {}]]);
  const day = 24 * 60 * 60;
  const seconds = Array.from({ length: day }, (_, i) => ({ time: 2 * i, queues }));
  const kept = thin(seconds, 2 * day);
  expect(kept[0]?.time).toBe(day);
  expect(kept.filter(({ time }) => time >= 2 * day - 1200)).toHaveLength(600);
  expect(kept.filter(({ time }) => time < 2 * day - 1200)).toHaveLength((day - 1200) / 30);
  const interruption = { time: day + 7, queues: new Map() };
  expect(thin([...seconds, interruption], 2 * day)).toContain(interruption);
});

test(
  "The kinds of events are those that the server knows, in the order of their numbers",
  pageOnly,
  () => {
    expect(kindNames).toEqual(Object.keys(kinds));
    expect(Object.values(kinds).map(({ number }) => number)).toEqual(
      kindNames.map((_, i) => i + 1),
    );
  },
);

test("Figures read well", pageOnly, () => {
  expect(grouped("18446744073709551615")).toBe(
    "18\u202f446\u202f744\u202f073\u202f709\u202f551\u202f615",
  );
  expect(grouped(999)).toBe("999");
  expect(bytes(0)).toBe("0\u00a0B");
  expect(bytes(8 << 20)).toBe("8.0\u00a0MiB");
  expect(duration(59.4)).toBe("59\u00a0s");
  expect(duration(3600 * 26)).toBe("1\u00a0d 2\u00a0h");
  expect(roundDuration(7200)).toBe("2\u00a0h");
  expect(roundDuration(5 * 86_400)).toBe("5\u00a0d");
  expect(roundDuration(90)).toBe("1\u00a0min 30\u00a0s");
  expect(roundDuration(0)).toBe("0\u00a0s");
  expect(rateFormat(0.5)(0.5)).toBe("30.0\u00a0/min");
  expect(rateFormat(1234)(1234)).toBe("1\u202f234\u00a0/s");
  expect([2, 0.05, 0].map(rateFormat(2, 0.05, 0))).toEqual([
    "2.0\u00a0/s",
    "0.05\u00a0/s",
    "0\u00a0/s",
  ]);
});

test("An event of today has a time, an older one a day", pageOnly, () => {
  const now = 1710287999; // the last second of a day
  expect(shortTime(1710201600, "utc", now)).toBe("00:00:00");
  expect(shortTime(1710201599, "utc", now)).toBe("2024-03-11");
});

test("Characters that cannot be seen are shown", pageOnly, () => {
  expect(visible("a\u0000b\u202ec\u200bd\ne")).toBe("a\u2400b<U+202E>c<U+200B>d\u240ae");
  expect(visible("Grüße 漢字 🙂")).toBe("Grüße 漢字 🙂");
});
