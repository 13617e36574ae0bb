// Writes the built page as C++: what apps/eventd/console/AssetTable.h declares.
//   node embed.mjs DIST OUTPUT
import { readdir, readFile, writeFile } from "node:fs/promises";
import { join } from "node:path";
import { gzipSync } from "node:zlib";

const [dist, output] = process.argv.slice(2);
const types = {
  html: "text/html; charset=utf-8",
  js: "text/javascript; charset=utf-8",
  css: "text/css; charset=utf-8",
  svg: "image/svg+xml",
  txt: "text/plain; charset=utf-8",
};

// Character literals, because a number above 127 does not fit a char everywhere.
function bytesOf(content) {
  const literals = Array.from(content, (byte) => `'\\x${byte.toString(16).padStart(2, "0")}'`);
  const lines = [];
  for (let at = 0; at < literals.length; at += 16) lines.push(literals.slice(at, at + 16).join());
  return lines.join(",\n");
}

const arrays = [];
const rows = [];

function addArray(content) {
  if (content.length === 0) return "{}";
  const name = `k${arrays.length}`;
  arrays.push(`constexpr char ${name}[] = {\n${bytesOf(content)}};\n`);
  return `{${name}, ${content.length}}`;
}

async function add(path, file, immutable) {
  const content = await readFile(file);
  const small = gzipSync(content, { level: 9 });
  const gzip = addArray(small.length < content.length ? small : Buffer.alloc(0));
  const type = types[file.split(".").pop()];
  rows.push(`    {"${path}", "${type}", ${addArray(content)}, ${gzip}, ${immutable}},\n`);
}

await add("/", join(dist, "index.html"), false);
for (const name of (await readdir(join(dist, "assets"))).sort()) {
  await add(`/assets/${name}`, join(dist, "assets", name), true);
}

await writeFile(
  output,
  `// Made by web/console/embed.mjs from the built page.
#include "apps/eventd/console/AssetTable.h"

namespace EventApps {
namespace {

${arrays.join("\n")}
constexpr Asset kAssets[] = {
${rows.join("")}};

}  // namespace

std::span<const Asset> assetTable() {
  return kAssets;
}

}  // namespace EventApps
`,
);
