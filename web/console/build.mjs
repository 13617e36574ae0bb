// Makes dist/: index.html, one script, one style sheet and the icon, whose names carry a hash of
// their content, so that browsers may keep them for ever; and SHA256SUMS, which tells with
// `sha256sum --check` whether they are still what the sources give.
//   node build.mjs [FOLDER]     default: dist
import { createHash } from "node:crypto";
import { mkdir, readFile, rm, writeFile } from "node:fs/promises";
import { dirname, join } from "node:path";
import { fileURLToPath } from "node:url";
import { build } from "esbuild";

const root = dirname(fileURLToPath(import.meta.url));
const folder = process.argv[2] ?? join(root, "dist");

const { outputFiles, metafile } = await build({
  absWorkingDir: root,
  entryPoints: [join(root, "src/main.tsx")],
  outfile: join(folder, "console.js"),
  bundle: true,
  minify: true,
  lineLimit: 120, // so that a change can be read line by line
  write: false,
  metafile: true,
  format: "esm",
  target: "es2022",
  charset: "utf8",
  legalComments: "inline",
  define: { "process.env.NODE_ENV": '"production"' },
  logLevel: "warning",
});

await rm(folder, { recursive: true, force: true });
await mkdir(join(folder, "assets"), { recursive: true });

const sha256 = (content) => createHash("sha256").update(content).digest("hex");

async function keep(name, ending, content) {
  const path = `assets/${name}-${sha256(content).slice(0, 12)}.${ending}`;
  await writeFile(join(folder, path), content);
  return path;
}

// The libraries that are in the script ask for their licences to come along.
async function licences() {
  const pattern = /node_modules\/((?:@[^/]+\/)?[^/]+)\//;
  const used = Object.keys(metafile.inputs).map((path) => pattern.exec(path)?.[1]);
  const texts = [...new Set(used.filter(Boolean))].sort().map(async (name) => {
    const licence = await readFile(join(root, "node_modules", name, "LICENSE"), "utf8");
    return `${name}\n\n${licence.trim()}\n`;
  });
  return (await Promise.all(texts)).join(`\n${"-".repeat(72)}\n\n`);
}

const built = (ending) => outputFiles.find((file) => file.path.endsWith(ending)).contents;
const places = {
  SCRIPT: await keep("console", "js", built(".js")),
  STYLE: await keep("console", "css", built(".css")),
  LICENCES: await keep("licences", "txt", await licences()),
  ICON: await keep("icon", "svg", await readFile(join(root, "icon.svg"))),
};
const page = await readFile(join(root, "index.html"), "utf8");
await writeFile(
  join(folder, "index.html"),
  page.replace(/%(\w+)%/g, (_, name) => places[name]),
);

// A line for each file that the page is made from, and for each that was made.
async function sums() {
  const made = ["index.html", ...Object.values(places)];
  const sources = Object.keys(metafile.inputs).filter((path) => !path.startsWith("node_modules/"));
  sources.push(
    "index.html",
    "icon.svg",
    "build.mjs",
    "package.json",
    "package-lock.json",
    "tsconfig.json",
  );
  const line = async (base, path, shown) =>
    `${sha256(await readFile(join(base, path)))}  ${shown}\n`;
  const lines = [
    ...sources.sort().map((path) => line(root, path, path)),
    ...made.sort().map((path) => line(folder, path, `dist/${path}`)),
  ];
  return (await Promise.all(lines)).join("");
}
await writeFile(join(folder, "SHA256SUMS"), await sums());
