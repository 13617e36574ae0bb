// The queues of the mock server, in memory.
import { EventEmitter } from "node:events";
import { eventOf, inventEvent } from "./events.mjs";

const now = () => Math.floor(Date.now() / 1000);

export class Store extends EventEmitter {
  constructor(firstId) {
    super();
    this.setMaxListeners(0);
    this.nextId = BigInt(firstId);
    this.queues = new Map();
    this.writes = []; // [milliseconds, kind]
    this.deletes = [];
    this.addQueue(0, {});
    this.addQueue(3, { name: "files-silver", type: 9 });
    this.addQueue(12, { name: "mail archive", type: 4 });
  }

  addQueue(dsid, { name, type }) {
    this.queues.set(dsid, { dsid, name, type, events: [], highestId: 0n });
  }

  add(dsid, kind, fields, date = now(), rest = {}) {
    const queue = this.queues.get(dsid);
    const id = this.nextId++;
    const event = { ...eventOf(kind, fields, dsid, id, date), ...rest };
    queue.events.push(event);
    queue.highestId = id;
    this.writes.push([Date.now(), kind]);
    this.emit("event", event);
    return id;
  }

  invent(dsid, age = 0) {
    const date = now() - age;
    const { kind, fields } = inventEvent(date);
    return this.add(dsid, kind, fields, date);
  }

  remove(dsid, id) {
    const queue = this.queues.get(dsid);
    const at = queue.events.findIndex((event) => event.id === id);
    if (at < 0) return false;
    queue.events.splice(at, 1);
    this.deletes.push(Date.now());
    return true;
  }

  figuresOf(queue) {
    const types = {};
    for (const event of queue.events) types[event.kind] = (types[event.kind] ?? 0) + 1;
    const dates = queue.events.map((event) => event.date);
    const figures = {
      dsid: queue.dsid,
      known: true,
      count: queue.events.length,
      damaged: queue.events.filter((event) => event.problem).length,
      highestId: queue.highestId,
      types,
    };
    if (queue.dsid !== 0) Object.assign(figures, { name: queue.name, type: queue.type });
    if (dates.length > 0) {
      figures.oldest = dates.reduce((a, b) => Math.min(a, b));
      figures.newest = dates.reduce((a, b) => Math.max(a, b));
    }
    return figures;
  }

  rates() {
    const since = Date.now() - 60_000;
    this.writes = this.writes.filter(([time]) => time > since);
    this.deletes = this.deletes.filter((time) => time > since);
    const byType = {};
    for (const [, kind] of this.writes) byType[kind] = (byType[kind] ?? 0) + 1 / 60;
    return {
      written: { "1m": this.writes.length / 60 },
      deleted: { "1m": this.deletes.length / 60 },
      byType,
    };
  }
}
