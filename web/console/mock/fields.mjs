// What the interface says of the kinds' fields.

const text = (key, mostBytes, help) => ({ key, type: "text", required: true, mostBytes, help });
const number = (key, type, help) => ({ key, type, required: true, help });
const server = text("server", 124, "server name");
const state = number("state", "state", "0, 1 or 2");
const time = { key: "time", type: "uint64", required: false, help: "seconds since 1970" };

export const fieldsOfKinds = {
  legacy: {
    summary: "a text of an older event scheme",
    fields: [text("payload", 1020, "opaque text of the older scheme")],
  },
  imagerep: {
    summary: "an image was replicated",
    fields: [
      { ...text("lsu", 1023, "storage unit"), required: false },
      number("size", "uint32", "size of the payload file"),
      text("path", 2044, "path of the payload file"),
    ],
  },
  lsustatus: { summary: "a storage unit changed state", fields: [state, server] },
  serverstatus: { summary: "a server changed state", fields: [state, server] },
  capacity: {
    summary: "capacity figures of a server",
    fields: [
      number("capacity", "uint64", "total capacity"),
      number("capacityphys", "uint64", "physical capacity"),
      number("used", "uint64", "used space"),
      number("usedphys", "uint64", "physical used space"),
      server,
    ],
  },
  abilities: {
    summary: "ability flags of a server",
    fields: [number("flags", "flags", "ability flags, as 31 or 0x1F"), server],
  },
  activity: {
    summary: "an action with a message",
    fields: [
      number("action", "int32", "action code"),
      time,
      number("severity", "int32", "severity"),
      text("msg", 1020, "message"),
    ],
  },
  audit: {
    summary: "an audit record",
    fields: [
      number("action", "int32", "action code"),
      time,
      number("loadSize", "int32", "size figure"),
      text("AUditMSg", 10236, "message, not empty"),
    ],
  },
  kelp: {
    summary: "an issue of the file-share service",
    fields: [
      number("severity", "int32", "severity"),
      number("issue", "int32", "issue code"),
      number("share_type", "int32", "kind of share"),
      number("name", "int32", "share name id"),
      number("host", "int32", "host id"),
      text("string", 1020, "free text"),
    ],
  },
};
