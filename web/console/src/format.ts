// Figures as people read them.

import type { Integer } from "./api/json";

// Groups of three digits, exact for any length.
export function grouped(value: Integer): string {
  const text = String(value);
  return /^-?\d+$/.test(text) ? text.replace(/\B(?=(\d{3})+$)/g, "\u202f") : text;
}

export function bytes(value: Integer): string {
  const units = ["B", "KiB", "MiB", "GiB", "TiB", "PiB"];
  let amount = Number(value);
  let unit = 0;
  for (; amount >= 1024 && unit + 1 < units.length; ++unit) amount /= 1024;
  return `${unit === 0 ? amount : amount.toFixed(1)}\u00a0${units[unit]}`;
}

export function duration(seconds: number): string {
  const whole = Math.max(0, Math.round(seconds));
  if (whole < 60) return `${whole}\u00a0s`;
  if (whole < 3600) return `${Math.floor(whole / 60)}\u00a0min ${whole % 60}\u00a0s`;
  if (whole < 86400) {
    return `${Math.floor(whole / 3600)}\u00a0h ${Math.floor((whole % 3600) / 60)}\u00a0min`;
  }
  const days = Math.floor(whole / 86400);
  const hours = Math.floor((whole % 86400) / 3600);
  return days >= 100 ? `${grouped(days)}\u00a0d` : `${days}\u00a0d ${hours}\u00a0h`;
}

// The same without a part that is nothing, for the lines of a scale.
export function roundDuration(seconds: number): string {
  return duration(seconds).replace(/ 0\u00a0\w+$/, "");
}

// Writes rates that are given for each second. Those that stand side by side have one unit, which
// suits the highest of them: slow ones are told for each minute.
export function rateFormat(...all: number[]): (perSecond: number) => string {
  const perMinute = Math.max(...all) < 1;
  const unit = perMinute ? "\u00a0/min" : "\u00a0/s";
  return (perSecond) => {
    const rate = perMinute ? perSecond * 60 : perSecond;
    if (rate === 0) return `0${unit}`;
    if (rate >= 100) return `${grouped(Math.round(rate))}${unit}`;
    return `${rate.toFixed(rate < 1 ? 2 : 1)}${unit}`;
  };
}

function pad(value: number): string {
  return String(value).padStart(2, "0");
}

// The zone of what dateTime() writes, in short: "Berlin".
export function zoneName(clock: string): string {
  return zoneOf(clock).replace(/^.*\//, "").replaceAll("_", " ");
}

export function zoneOf(clock: string): string {
  return clock === "utc" ? "UTC" : new Intl.DateTimeFormat().resolvedOptions().timeZone;
}

// "2026-11-21 09:22:14", or the bare number of seconds where no calendar has such a date.
export function dateTime(seconds: Integer, clock: string): string {
  const date = new Date(Number(seconds) * 1000);
  if (Number.isNaN(date.getTime()) || date.getUTCFullYear() > 9999) return `${seconds} s`;
  if (clock === "utc") return date.toISOString().slice(0, 19).replace("T", " ");
  return (
    `${date.getFullYear()}-${pad(date.getMonth() + 1)}-${pad(date.getDate())} ` +
    `${pad(date.getHours())}:${pad(date.getMinutes())}:${pad(date.getSeconds())}`
  );
}

export function timeOfDay(milliseconds: number, clock: string): string {
  return dateTime(milliseconds / 1000, clock).slice(11);
}

// The time of an event of today, the day of an older one.
export function shortTime(seconds: Integer, clock: string, now = Date.now() / 1000): string {
  const text = dateTime(seconds, clock);
  const today = dateTime(now, clock).slice(0, 10);
  return text.startsWith(today) ? text.slice(11) : text.slice(0, 10);
}

export function ageOf(seconds: Integer): string {
  return duration(Date.now() / 1000 - Number(seconds));
}
