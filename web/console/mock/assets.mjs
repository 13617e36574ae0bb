// The built page, with the headers that eventd gives it.
import { createReadStream, existsSync } from "node:fs";
import { join } from "node:path";

const types = {
  html: "text/html; charset=utf-8",
  js: "text/javascript; charset=utf-8",
  css: "text/css; charset=utf-8",
  svg: "image/svg+xml",
  txt: "text/plain; charset=utf-8",
};

export const policy =
  "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self' data:; " +
  "connect-src 'self'; base-uri 'none'; form-action 'none'; frame-ancestors 'none'";

export function serveAsset(dist, path, response) {
  const name = path === "/" ? "index.html" : path.slice(1);
  const file = join(dist, name);
  if (!/^(index\.html|assets\/[\w.-]+)$/.test(name) || !existsSync(file)) {
    response.writeHead(404, { "Content-Type": "text/plain" }).end("not found\n");
    return;
  }
  response.writeHead(200, {
    "Content-Type": types[name.split(".").pop()],
    "Content-Security-Policy": policy,
    "X-Content-Type-Options": "nosniff",
    "Cache-Control": name === "index.html" ? "no-store" : "public, max-age=31536000, immutable",
  });
  createReadStream(file).pipe(response);
}
