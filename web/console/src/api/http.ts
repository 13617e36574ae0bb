// Requests to the server that this page came from.

import { parseJson } from "./json";
import type { Problem } from "./types";

const answerTime = 10_000;

// The server answered, but not with what was asked for.
export class Refusal extends Error {
  constructor(
    readonly status: number,
    readonly problem: Problem,
    readonly retryAfter: number | undefined,
  ) {
    super(problem.detail || problem.title || `The server answered with status ${status}.`);
  }
}

// The server could not be reached, or broke off.
export class Unreachable extends Error {}

export interface Credentials {
  token: string | undefined;
}

export interface Options {
  method?: string;
  body?: unknown;
  headers?: Record<string, string>;
  signal?: AbortSignal;
  patience?: number; // milliseconds for the whole answer
}

async function problemOf(response: Response): Promise<Problem> {
  try {
    return parseJson<Problem>(await response.text());
  } catch {
    return {};
  }
}

// Resolves with an answer that says yes; a stream's body is still to come.
export async function send(
  credentials: Credentials,
  path: string,
  options: Options = {},
): Promise<Response> {
  const headers: Record<string, string> = { ...options.headers };
  if (credentials.token) headers.Authorization = `Bearer ${credentials.token}`;
  if (options.body !== undefined) headers["Content-Type"] = "application/json";
  let response: Response;
  try {
    response = await fetch(path, {
      method: options.method ?? "GET",
      headers,
      body: options.body === undefined ? null : JSON.stringify(options.body),
      signal: options.signal ?? null,
      cache: "no-store",
      credentials: "same-origin",
    });
  } catch (error) {
    throw new Unreachable("The server does not answer.", { cause: error });
  }
  if (response.ok) return response;
  const retryAfter = Number(response.headers.get("Retry-After") ?? Number.NaN);
  throw new Refusal(
    response.status,
    await problemOf(response),
    Number.isFinite(retryAfter) ? retryAfter : undefined,
  );
}

export async function ask<T>(
  credentials: Credentials,
  path: string,
  options: Options = {},
): Promise<T> {
  const limit = AbortSignal.timeout(options.patience ?? answerTime);
  const signal = options.signal ? AbortSignal.any([options.signal, limit]) : limit;
  const response = await send(credentials, path, { ...options, signal });
  let text: string;
  try {
    text = await response.text();
  } catch (error) {
    throw new Unreachable("The server broke off its answer.", { cause: error });
  }
  try {
    return parseJson<T>(text);
  } catch {
    throw new Refusal(response.status, { detail: `The answer to ${path} is not JSON.` }, undefined);
  }
}
