// Events as a storage server's services would write them, from a generator that repeats itself.
import { kinds } from "./kinds.mjs";

const sections = {
  legacy: (f) => `;LEGACYEVENT{payload:${f.payload};}}`,
  imagerep: (f) => `;lsu:${f.lsu};IMAGEREPEVENT{size:${f.size};path:${f.path};}}`,
  lsustatus: (f) => `;LSUSTATUSEVENT{state:${f.state};server:${f.server};}}`,
  serverstatus: (f) => `;SERVERSTATUSEVENT{state:${f.state};server:${f.server};}}`,
  capacity: (f) =>
    `;CAPACITYEVENT{capacity:${f.capacity};capacityphys:${f.capacityphys};used:${f.used};` +
    `usedphys:${f.usedphys};server:${f.server};}}`,
  abilities: (f) =>
    `;ABILITIESEVENT{flags:0x${f.flags.toString(16).toUpperCase()};server:${f.server};}}`,
  activity: (f) =>
    `;{ACTIVITYEVENT{version:1;action:${f.action};time:${f.time};severity:${f.severity};msg:${f.msg};}}`,
  audit: (f) =>
    `;AUDITEVENT{version:${f.version};action:${f.action};time:${f.time};loadSize:${f.loadSize};` +
    `AUditMSg:${f.AUditMSg};}}`,
  kelp: (f) =>
    `;KELPEVENT{version:${f.version};severity:${f.severity};issue:${f.issue};share_type:${f.share_type};` +
    `issue_duration:${f.issue_duration};name:${f.name};host:${f.host};string:${f.string};}}`,
};

export function eventOf(kind, fields, dsid, id, date) {
  const type = kinds[kind].number;
  return {
    id,
    dsid,
    type,
    kind,
    date,
    time: new Date(date * 1000).toISOString().replace(".000", ""),
    fields,
    eventString: `EVENT{version:1;type:${type};id:${id};date:${date}${sections[kind](fields)}`,
  };
}

function randomNumbers(seed) {
  let state = seed;
  return (most) => {
    state = (Math.imul(state, 1664525) + 1013904223) >>> 0;
    return Math.floor((state / 2 ** 32) * most);
  };
}

const random = randomNumbers(7);
const pick = (list) => list[random(list.length)];
const clients = ["db01", "db02", "web01", "files3", "build7", "mail"];
const users = ["admin", "m.okafor", "j.lindqvist", "operator"];

const makers = {
  capacity: () => {
    const capacity = 131_941_395_333_120;
    const used = Math.floor(capacity * (0.2 + random(600) / 1000));
    return {
      capacity,
      capacityphys: Math.floor(capacity * 0.85),
      used,
      usedphys: Math.floor(used * 0.3),
      server: `node${1 + random(3)}`,
    };
  },
  activity: (time) => ({
    version: 1,
    action: 1 + random(9),
    time,
    severity: 1 + random(3),
    msg: pick([
      `backup of ${pick(clients)} started`,
      `backup of ${pick(clients)} done: ${100 + random(400)} GiB read, ${80 + random(19)} % deduplicated`,
      "removal of unreferenced segments started",
      `removal of unreferenced segments done: ${random(500)} GiB freed`,
    ]),
  }),
  audit: (time) => ({
    version: 1,
    action: 1 + random(6),
    time,
    loadSize: random(90),
    AUditMSg: pick([
      `user ${pick(users)} logged in from 10.0.4.${random(250)}`,
      `policy files changed by ${pick(users)}: retention ${7 + random(30)} days`,
    ]),
  }),
  imagerep: (time) => ({
    lsu: pick(["vol1", "vol2", "files-silver"]),
    size: 4096 * random(2000),
    path: `/var/spool/images/${pick(clients)}_${time}.img`,
  }),
  legacy: () => ({
    payload: `JOB=${4000 + random(200)} STATE=${pick(["DONE", "HELD"])} CLIENT=${pick(clients)}`,
  }),
  lsustatus: () => ({ state: random(3), server: `node${1 + random(3)}` }),
  serverstatus: () => ({ state: random(3), server: `node${1 + random(3)}` }),
  abilities: () => ({ flags: 31, server: `node${1 + random(3)}` }),
  kelp: () => {
    const share = 1 + random(20);
    return {
      version: 1,
      severity: 1 + random(4),
      issue: 5,
      share_type: 1,
      issue_duration: random(900),
      name: share,
      host: random(8),
      string: `share ${share} not reachable`,
    };
  },
};

const mixture = [
  ...Array(8).fill("capacity"),
  ...Array(7).fill("activity"),
  ...Array(5).fill("audit"),
  "imagerep",
  "imagerep",
  "legacy",
  "kelp",
  "lsustatus",
  "serverstatus",
  "abilities",
];

export function inventEvent(time) {
  const kind = pick(mixture);
  return { kind, fields: makers[kind](time) };
}
