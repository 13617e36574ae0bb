// JSON whose whole numbers beyond 2^53 are BigInt.

const mark = "\u0000";
const tokens = /"[^"\\]*(?:\\.[^"\\]*)*"|-?\d+(?:\.\d+)?(?:[eE][+-]?\d+)?/g;

export function toJson(value) {
  const text = JSON.stringify(value, (_, one) => (typeof one === "bigint" ? `${mark}${one}` : one));
  return text.replace(/"\\u0000(-?\d+)"/g, "$1");
}

export function fromJson(text) {
  const marked = text.replace(tokens, (token) =>
    /^-?\d{16,}$/.test(token) ? `"\\u0000${token}"` : token,
  );
  return JSON.parse(marked, (_, one) =>
    typeof one === "string" && one.startsWith(mark) ? BigInt(one.slice(1)) : one,
  );
}
