// Makes dist/: index.html, one script, one style sheet and the icon, whose names carry a hash of
// their content, so that browsers may keep them for ever.
//   node build.mjs [FOLDER]     default: dist
import { createHash } from "node:crypto";
import { mkdir, readFile, rm, writeFile } from "node:fs/promises";
import { dirname, join } from "node:path";
import { fileURLToPath } from "node:url";
import { build } from "esbuild";

const root = dirname(fileURLToPath(import.meta.url));
const folder = process.argv[2] ?? join(root, "dist");

const { outputFiles } = await build({
  entryPoints: [join(root, "src/main.tsx")],
  outfile: join(folder, "console.js"),
  bundle: true,
  minify: true,
  write: false,
  format: "esm",
  target: "es2022",
  charset: "utf8",
  legalComments: "inline",
  define: { "process.env.NODE_ENV": '"production"' },
  logLevel: "warning",
});

await rm(folder, { recursive: true, force: true });
await mkdir(join(folder, "assets"), { recursive: true });

async function keep(name, ending, content) {
  const hash = createHash("sha256").update(content).digest("hex").slice(0, 12);
  const path = `assets/${name}-${hash}.${ending}`;
  await writeFile(join(folder, path), content);
  return path;
}

const built = (ending) => outputFiles.find((file) => file.path.endsWith(ending)).contents;
const places = {
  SCRIPT: await keep("console", "js", built(".js")),
  STYLE: await keep("console", "css", built(".css")),
  ICON: await keep("icon", "svg", await readFile(join(root, "icon.svg"))),
};
const page = await readFile(join(root, "index.html"), "utf8");
await writeFile(
  join(folder, "index.html"),
  page.replace(/%(\w+)%/g, (_, name) => places[name]),
);
