// Who is looking: the token, what the server says of it, logging in and out.

import { computed, signal } from "@preact/signals";
import { ask, type Options, Refusal, send } from "../api/http";
import type { Role, WhoAmI } from "../api/types";

const storageKey = "eventd.token";

// "starting" until the server has said once who we are.
export type Standing = "starting" | "out" | "in";

export const standing = signal<Standing>("starting");
export const me = signal<WhoAmI | undefined>();
export const refusal = signal("");

const token = signal<string | undefined>(undefined);
export const hasToken = computed(() => token.value !== undefined);

const ranks: Record<Role, number> = { read: 1, write: 2, admin: 3 };

export function may(role: Role): boolean {
  return me.value !== undefined && ranks[me.value.role] >= ranks[role];
}

// A link may bring the token along; it must not stay in the address and so in the history.
export function takeTokenFromAddress(): boolean {
  const found = /^#token=(.+)$/.exec(location.hash);
  if (!found?.[1]) return false;
  let value = found[1];
  try {
    value = decodeURIComponent(value);
  } catch {
    // Then it was not encoded.
  }
  keep(value);
  history.replaceState(null, "", location.pathname + location.search);
  return true;
}

function keep(value: string | undefined): void {
  token.value = value;
  if (value === undefined) sessionStorage.removeItem(storageKey);
  else sessionStorage.setItem(storageKey, value);
}

export function restoreToken(): void {
  token.value = sessionStorage.getItem(storageKey) ?? undefined;
}

function leave(why: string): void {
  keep(undefined);
  me.value = undefined;
  refusal.value = why;
  standing.value = "out";
}

export function logOut(): void {
  leave("");
}

function credentials() {
  return { token: token.value };
}

// A refused token ends the session, whoever notices it first; but an answer to a request made with
// an earlier token says nothing about this one.
async function guarded<T>(request: (asked: { token: string | undefined }) => Promise<T>) {
  const asked = credentials();
  try {
    return await request(asked);
  } catch (error) {
    if (error instanceof Refusal && error.status === 401 && asked.token === token.value) {
      leave(asked.token === undefined ? "" : "The server refused this token.");
    }
    throw error;
  }
}

export function askServer<T>(path: string, options?: Options): Promise<T> {
  return guarded((asked) => ask<T>(asked, path, options));
}

export function openStream(path: string, options?: Options): Promise<Response> {
  return guarded((asked) => send(asked, path, options));
}

// Asks the server who we are. Throws when it cannot say; a refusal ends in "out".
export async function identify(): Promise<void> {
  try {
    me.value = await askServer<WhoAmI>("/v1/whoami");
    refusal.value = "";
    standing.value = "in";
  } catch (error) {
    if (!(error instanceof Refusal && error.status === 401)) throw error;
  }
}

export async function logIn(text: string): Promise<void> {
  const value = text.trim();
  if (!/^[\x21-\x7e]+$/.test(value)) {
    refusal.value = "A token consists of visible ASCII characters, without blanks.";
    return;
  }
  keep(value);
  try {
    await identify();
  } catch (error) {
    leave(error instanceof Error ? error.message : String(error));
  }
}
