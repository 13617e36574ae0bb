// The server's HTTP interface, as far as the console and its tests use it.
import { fromJson, toJson } from "./exactJson.mjs";
import { kinds } from "./kinds.mjs";

const ranks = { read: 1, write: 2, admin: 3 };
const tokens = {
  "read-token": { role: "read", name: "dashboard" },
  "write-token": { role: "write", name: "producer" },
  "admin-token": { role: "admin", name: "operator" },
};

class Problem extends Error {
  constructor(status, name, detail, headers = {}) {
    super(detail);
    Object.assign(this, { status, name, headers });
  }
}

function reply(response, status, value) {
  response.writeHead(status, {
    "Content-Type": status < 400 ? "application/json" : "application/problem+json",
    "Cache-Control": "no-store",
    "X-Content-Type-Options": "nosniff",
  });
  response.end(value === undefined ? "" : toJson(value));
}

async function bodyOf(request) {
  const pieces = [];
  for await (const piece of request) pieces.push(piece);
  return Buffer.concat(pieces).toString();
}

export class Api {
  constructor(store, isClustered) {
    this.store = store;
    this.isClustered = isClustered;
    this.startTime = Math.floor(Date.now() / 1000);
    this.damage = 2;
    this.streams = 0;
  }

  // Resolves with false where the path is none of the interface's.
  async answer(request, response, url) {
    if (!/^\/(v1\/|healthz|readyz)/.test(url.pathname)) return false;
    try {
      await this.dispatch(request, response, url);
    } catch (error) {
      if (!(error instanceof Problem)) throw error;
      for (const [name, value] of Object.entries(error.headers)) response.setHeader(name, value);
      const { status, name, message: detail } = error;
      reply(response, status, { type: `/problems/${name}`, title: name, status, detail });
    }
    return true;
  }

  identify(request) {
    const token = /^Bearer (.+)$/.exec(request.headers.authorization ?? "")?.[1];
    const known = tokens[token];
    if (known) return { ...known, via: "token" };
    const detail = token ? "The token is not known." : "This needs a token.";
    throw new Problem(401, "unauthorized", detail, { "WWW-Authenticate": "Bearer" });
  }

  async dispatch(request, response, url) {
    const path = url.pathname;
    if (path === "/healthz") return reply(response, 200, { status: "ok" });
    if (path === "/readyz") return reply(response, 200, { status: "ready" });
    const me = this.identify(request);
    const route = routes.find(({ method, at }) => method === request.method && at.test(path));
    if (!route) throw new Problem(404, "not-found", `There is no ${request.method} ${path}.`);
    if (ranks[me.role] < ranks[route.role]) {
      throw new Problem(
        403,
        "forbidden",
        `This needs the role ${route.role}; the token has ${me.role}.`,
      );
    }
    const [, ...parts] = route.at.exec(path);
    await route.run.call(this, { request, response, url, parts, me });
  }

  queue(dsid) {
    const queue = this.store.queues.get(Number(dsid));
    if (!queue)
      throw new Problem(404, "unknown-data-selection", `There is no data selection ${dsid}.`);
    return queue;
  }

  queues() {
    return [...this.store.queues.values()].map((queue) => this.store.figuresOf(queue));
  }

  stats({ response }) {
    const queues = this.queues();
    const count = queues.reduce((sum, queue) => sum + queue.count, 0);
    const stats = {
      version: "1.0.0",
      home: "/var/lib/eventsystem",
      database: "/var/lib/eventsystem/events.db",
      durability: "group",
      count,
      queues,
      countLimit: this.isClustered ? 0 : 400,
      ageLimitDays: 0,
      bytes: { database: 409_600 + count * 300, wal: 32_768, diskFree: 81_234_567_168 },
      startTime: this.startTime,
      waiting: this.streams,
      connections: this.streams + 1,
      rates: this.store.rates(),
    };
    if (this.isClustered) stats.cluster = cluster;
    reply(response, 200, stats);
  }

  limits({ response }) {
    reply(response, 200, {
      countLimit: this.isClustered ? 0 : 400,
      count: this.store.queues.get(0).events.length,
      ageLimitDays: 0,
      bodyBytes: 8 << 20,
      batchEvents: 10_000,
      connections: 1024,
      waiting: 1000,
      requestsPerSecond: 200,
      kinds,
    });
  }

  list({ response, url, parts }) {
    const { events } = this.queue(parts[0]);
    const after = BigInt(url.searchParams.get("after") ?? "0");
    const limit = Number(url.searchParams.get("limit") ?? "100");
    const types = url.searchParams.get("type")?.split(",");
    const isWanted = (event) => event.id > after && (!types || types.includes(event.kind));
    const page = events.filter(isWanted).slice(0, limit);
    reply(response, 200, { events: page, last: page.at(-1)?.id ?? after });
  }

  one({ response, parts }) {
    const event = this.queue(parts[0]).events.find((one) => one.id === BigInt(parts[1]));
    if (!event) throw new Problem(404, "not-found", `There is no event ${parts[1]} in this queue.`);
    reply(response, 200, event);
  }

  remove({ response, parts }) {
    this.queue(parts[0]);
    if (!this.store.remove(Number(parts[0]), BigInt(parts[1]))) {
      throw new Problem(404, "not-found", `There is no event ${parts[1]} in this queue.`);
    }
    reply(response, 204);
  }

  async post({ request, response, parts }) {
    const { dsid } = this.queue(parts[0]);
    const body = fromJson(await bodyOf(request));
    const all = Array.isArray(body) ? body : [body];
    if (all.some((event) => !kinds[event.kind])) {
      throw new Problem(422, "invalid-event", "There is no such kind of event.");
    }
    const ids = all.map((event) => this.store.add(dsid, event.kind, event.fields, event.date));
    reply(response, 201, { ids });
  }

  stream({ request, response, url, parts }) {
    const queue = this.queue(parts[0]);
    const from = request.headers["last-event-id"] ?? url.searchParams.get("after");
    const after = from == null ? queue.highestId : BigInt(from);
    response.writeHead(200, { "Content-Type": "text/event-stream", "Cache-Control": "no-store" });
    response.write(": \n\n");
    const tell = (event) => {
      if (event.dsid !== queue.dsid) return;
      response.write(`id: ${event.id}\nevent: event\ndata: ${toJson(event)}\n\n`);
    };
    for (const event of queue.events) if (event.id > after) tell(event);
    this.store.on("event", tell);
    const comments = setInterval(() => response.write(": \n\n"), 15_000);
    ++this.streams;
    response.on("close", () => {
      --this.streams;
      clearInterval(comments);
      this.store.off("event", tell);
    });
  }

  async addQueue({ request, response, parts }) {
    const dsid = Number(parts[0]);
    if (this.store.queues.has(dsid)) throw new Problem(409, "conflict", `${dsid} is there.`);
    this.store.addQueue(dsid, { name: "", type: 0, ...fromJson((await bodyOf(request)) || "{}") });
    reply(response, 201, this.store.figuresOf(this.queue(dsid)));
  }

  async check({ request, response }) {
    const { fix = false } = JSON.parse((await bodyOf(request)) || "{}");
    const findings = Array.from({ length: this.damage }, (_, i) => ({
      level: "error",
      code: 4,
      message: `event ${17 + i}: row and event string have different ids`,
    }));
    if (fix) this.damage = 0;
    reply(response, 200, { fix, findings, remaining: this.damage });
  }
}

const member = (n, rest) => ({
  endpoint: `10.0.0.${n}:2379`,
  reachable: true,
  failure: "",
  name: `etcd-${n}`,
  version: "3.4.23",
  leader: false,
  databaseBytes: 25_165_824,
  databaseBytesInUse: 9_437_184,
  quotaBytes: 2_147_483_648,
  ...rest,
});

const cluster = {
  members: [
    member(1, { leader: true }),
    member(2, { databaseBytes: 2_040_109_465 }),
    member(3, {
      reachable: false,
      failure: "failed to connect to all addresses",
      name: "",
      version: "",
    }),
  ],
  alarms: [],
  failure: "",
};

const on = (method, path, role, run) => ({ method, at: new RegExp(`^${path}$`), role, run });
const queuePath = "/v1/queues/(\\d+)/events";
const routes = [
  on("GET", "/v1/whoami", "read", ({ response, me }) => reply(response, 200, me)),
  on("GET", "/v1/queues", "read", function ({ response }) {
    reply(response, 200, { queues: this.queues() });
  }),
  on("GET", "/v1/stats", "read", Api.prototype.stats),
  on("GET", "/v1/limits", "read", Api.prototype.limits),
  on("GET", "/v1/cluster", "read", function ({ response }) {
    reply(response, 200, this.isClustered ? { clustered: true, ...cluster } : { clustered: false });
  }),
  on("PUT", "/v1/queues/(\\d+)", "admin", Api.prototype.addQueue),
  on("GET", queuePath, "read", Api.prototype.list),
  on("POST", queuePath, "write", Api.prototype.post),
  on("GET", `${queuePath}/stream`, "read", Api.prototype.stream),
  on("GET", `${queuePath}/(\\d+)`, "read", Api.prototype.one),
  on("DELETE", `${queuePath}/(\\d+)`, "write", Api.prototype.remove),
  on("POST", "/v1/check", "admin", Api.prototype.check),
];
