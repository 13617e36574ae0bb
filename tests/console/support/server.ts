// The server behind the page: the one that the environment names, or a mock of our own.
import { type ChildProcess, spawn } from "node:child_process";
import { dirname, join } from "node:path";
import { createInterface } from "node:readline";
import { fileURLToPath } from "node:url";

export interface Server {
  url: string;
  admin: string; // tokens
  read: string;
  stop: () => Promise<void>;
}

const mock = join(dirname(fileURLToPath(import.meta.url)), "../../../web/console/mock/server.mjs");

async function firstLine(child: ChildProcess): Promise<string> {
  if (!child.stdout) throw new Error("no output");
  for await (const line of createInterface({ input: child.stdout })) return line;
  throw new Error("the mock server ended before it served");
}

export async function startMock(...options: string[]): Promise<Server> {
  const dist = process.env.CONSOLE_DIST;
  const all = ["--port", "0", "--rate", "0", ...(dist ? ["--dist", dist] : []), ...options];
  const child = spawn(process.execPath, [mock, ...all], { stdio: ["ignore", "pipe", "inherit"] });
  const ended = new Promise<void>((resolve) => child.once("exit", () => resolve()));
  const stop = async () => {
    child.kill();
    await ended;
  };
  return { url: await firstLine(child), admin: "admin-token", read: "read-token", stop };
}

function fromEnvironment(name: string): string {
  const value = process.env[name];
  if (!value) throw new Error(`CONSOLE_URL needs ${name} beside it`);
  return value;
}

export async function findServer(): Promise<Server> {
  const url = process.env.CONSOLE_URL;
  if (!url) return startMock("--events", "60");
  return {
    url,
    admin: fromEnvironment("CONSOLE_ADMIN_TOKEN"),
    read: fromEnvironment("CONSOLE_READ_TOKEN"),
    stop: async () => undefined,
  };
}
