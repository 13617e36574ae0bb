// What the server's answers hold.

import type { Integer } from "./json";

export type Role = "read" | "write" | "admin";

export interface WhoAmI {
  role: Role;
  via: string;
  name: string;
}

export interface Queue {
  dsid: Integer;
  name?: string;
  type?: Integer;
  known: boolean;
  count: number;
  damaged: number;
  highestId: Integer;
  oldest?: Integer;
  newest?: Integer;
  types: Record<string, number>;
}

export interface ClusterMember {
  endpoint: string;
  reachable: boolean;
  failure: string;
  name: string;
  version: string;
  leader: boolean;
  databaseBytes: number;
  databaseBytesInUse: number;
  quotaBytes: number;
}

export interface Cluster {
  members: ClusterMember[];
  alarms: string[];
  failure: string;
}

export interface Stats {
  version: string;
  home: string;
  database: string;
  durability: string;
  count: number;
  queues: Queue[];
  countLimit: number;
  ageLimitDays: number;
  bytes?: { database?: Integer; wal?: Integer; diskFree?: Integer };
  startTime: number;
  waiting: number;
  connections: number;
  rates?: {
    written?: Record<string, number>;
    deleted?: Record<string, number>;
    byType?: Record<string, number>;
  };
  cluster?: Cluster;
}

export interface KindField {
  key: string;
  type: string;
  required?: boolean;
  mostBytes?: number;
  help?: string;
}

export interface Limits {
  countLimit: number;
  count: number;
  ageLimitDays: number;
  bodyBytes?: number;
  batchEvents?: number;
  connections?: number;
  waiting?: number;
  requestsPerSecond?: number;
  kinds: Record<string, { summary?: string; fields: KindField[] }>;
}

export interface Event {
  id: Integer;
  dsid: Integer;
  type: number;
  kind: string;
  date: Integer;
  time: string;
  fields: Record<string, Integer>;
  eventString: string;
  eventStringHex?: string;
  problem?: string;
}

export interface EventPage {
  events: Event[];
  last: Integer;
}

export interface Finding {
  level: string;
  code: number;
  message: string;
}

export interface CheckReport {
  fix: boolean;
  checked?: string; // "database" in cluster mode, where the queues are not in it
  findings: Finding[];
  remaining: number;
}

export interface Problem {
  type?: string;
  title?: string;
  status?: number;
  detail?: string;
}
