// A server that looks like eventd to the console: for work on the page without eventd, and for the
// tests of the page. Everything is in memory and gone with it.
//   node mock/server.mjs [--port 8780] [--rate EVENTS_A_SECOND] [--events COUNT] [--cluster]
//                        [--first-id ID] [--dist FOLDER]
// Tokens: read-token, write-token, admin-token. Prints its address when it serves.
import { createServer } from "node:http";
import { fileURLToPath } from "node:url";
import { parseArgs } from "node:util";
import { Api } from "./api.mjs";
import { serveAsset } from "./assets.mjs";
import { Store } from "./store.mjs";

const { values: options } = parseArgs({
  options: {
    port: { type: "string", default: "8780" },
    rate: { type: "string", default: "2" },
    events: { type: "string", default: "240" },
    "first-id": { type: "string", default: "1" },
    cluster: { type: "boolean", default: false },
    dist: { type: "string", default: fileURLToPath(new URL("../dist", import.meta.url)) },
  },
});

const store = new Store(options["first-id"]);
const count = Number(options.events);
for (let i = 0; i < count; ++i) store.invent(i % 9 === 0 ? 3 : 0, (count - i) * 37);
if (count > 0) {
  store.add(3, "legacy", { payload: "JOB=1 STATE=" }, undefined, {
    problem: "invalid event string",
    fields: {},
  });
}

const api = new Api(store, options.cluster);
const server = createServer((request, response) => {
  const url = new URL(request.url, "http://mock");
  api
    .answer(request, response, url)
    .then((done) => done || serveAsset(options.dist, url.pathname, response));
});

const rate = Number(options.rate);
if (rate > 0) {
  setInterval(() => {
    store.invent(Math.random() < 0.15 ? 3 : 0);
    const queue = store.queues.get(0);
    if (queue.events.length > count && Math.random() < 0.8) store.remove(0, queue.events[0].id);
  }, 1000 / rate);
}

server.listen(Number(options.port), "127.0.0.1", () => {
  console.log(`http://127.0.0.1:${server.address().port}`);
});
