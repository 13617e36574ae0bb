#!/usr/bin/env python3
"""Writes examples/day.events: one day of a server's events, as eventctl import reads them.

The same file every time: ./make_day_events.py > day.events
"""

import random

DAY = 1710201600  # 2024-03-12 00:00:00 UTC
HOUR = 3600
GIB = 1 << 30

NODES = ["node1", "node2", "node3"]
LSUS = ["vol1", "vol2", "mail-gold", "files-silver"]
CLIENTS = {0: ["db01", "db02", "web01", "build7"], 4: ["mail01", "mail02"], 7: ["nas01", "nas02"]}
USERS = ["admin", "m.okafor", "j.lindqvist", "backup-svc"]

HEADER = """\
# One day of a server's events: 12 March 2024, UTC.
#
# One event string a line, as `eventctl import` reads them. The ids are 0: a queue gives each event
# its own. Lines that begin with "dsid=N " go to the queue of a data selection; 4 and 7 must exist
# first:
#
#   eventctl dataselection add 4 --name "mail servers"
#   eventctl dataselection add 7 --name "file servers"
#   eventctl import day.events
#
# Nine lines are damaged, each in its own way; a comment above says how. The import names them and
# takes the others.
"""


class Day:
    def __init__(self):
        self.random = random.Random(20240312)
        self.lines = []  # (time, order, text)

    def event(self, time, kind, section, dsid=0):
        time = DAY + int(time)
        text = f"EVENT{{version:1;type:{kind};id:0;date:{time};{section}}}}}"
        if dsid:
            text = f"dsid={dsid} {text}"
        self.put(time, text)
        return time

    def put(self, time, text):
        self.lines.append((time, len(self.lines), text))

    def damaged(self, time, why, text):
        self.put(DAY + int(time), f"# Damaged: {why}.\n{text}")

    def soon(self, time, most=240):
        return time + self.random.randint(1, most)

    # The nine kinds.
    def legacy(self, time, payload, dsid=0):
        self.event(time, 1, f"LEGACYEVENT{{payload:{payload};", dsid)

    def image(self, time, lsu, size, path, dsid=0):
        self.event(time, 2, f"lsu:{lsu};IMAGEREPEVENT{{size:{size};path:{path};", dsid)

    def lsu_status(self, time, state, server):
        self.event(time, 3, f"LSUSTATUSEVENT{{state:{state};server:{server};")

    def server_status(self, time, state, server):
        self.event(time, 4, f"SERVERSTATUSEVENT{{state:{state};server:{server};")

    def capacity(self, time, server, total, used, dsid=0):
        physical = total * 85 // 100
        self.event(time, 5, f"CAPACITYEVENT{{capacity:{total};capacityphys:{physical};used:{used};"
                            f"usedphys:{used * 3 // 10};server:{server};", dsid)

    def abilities(self, time, flags, server):
        self.event(time, 6, f"ABILITIESEVENT{{flags:0x{flags:X};server:{server};")

    def activity(self, time, action, severity, message, dsid=0):
        self.event(time, 7, f"{{ACTIVITYEVENT{{version:1;action:{action};time:{DAY + int(time)};"
                            f"severity:{severity};msg:{message};", dsid)

    def audit(self, time, action, message, dsid=0):
        self.event(time, 8, f"AUDITEVENT{{version:1;action:{action};time:{DAY + int(time)};"
                            f"loadSize:{len(message)};AUditMSg:{message};", dsid)

    def kelp(self, time, severity, issue, value, name, host, text, dsid=0):
        key = "file_group" if issue == 3 else "issue_duration"
        self.event(time, 9, f"KELPEVENT{{version:1;severity:{severity};issue:{issue};share_type:1;"
                            f"{key}:{value};name:{name};host:{host};string:{text};", dsid)


def hourly_capacity(day):
    used = {node: day.random.randint(20, 60) * 1024 * GIB for node in NODES}
    for hour in range(24):
        for node in NODES:
            used[node] += day.random.randint(-200, 900) * GIB
            day.capacity(hour * HOUR + day.random.randint(0, 20), node, 120 * 1024 * GIB, used[node])
    for hour in range(0, 24, 6):
        day.capacity(hour * HOUR + 40, "node1", 20 * 1024 * GIB, (9 + hour // 6) * 1024 * GIB, 4)
        day.capacity(hour * HOUR + 45, "node2", 40 * 1024 * GIB, (22 + hour // 8) * 1024 * GIB, 7)


def backups(day):
    for dsid, clients in CLIENTS.items():
        for client in clients:
            for start in (0.4, 4.2, 12.1, 20.5):
                time = start * HOUR + day.random.randint(0, 1500)
                gib = day.random.randint(4, 900)
                day.activity(time, 1, 1, f"backup of {client} started", dsid)
                end = time + gib * 4
                if day.random.random() < 0.1:
                    day.activity(end, 2, 3, f"backup of {client} failed: connection reset by peer "
                                            f"after {gib} GiB", dsid)
                    continue
                ratio = day.random.randint(60, 98)
                day.activity(end, 2, 1, f"backup of {client} done: {gib} GiB read, {ratio} % "
                                        f"deduplicated", dsid)
                day.image(day.soon(end), day.random.choice(LSUS), gib * 1024 % 2**32,
                          f"/var/spool/images/{client}_{DAY + int(time)}.img", dsid)


def incidents(day):
    day.server_status(2.0 * HOUR, 1, "node2")
    day.activity(2.0 * HOUR + 5, 7, 2, "node2 leaves for maintenance")
    day.server_status(2.9 * HOUR, 0, "node2")
    for number, node in enumerate(NODES):
        day.abilities(3.0 * HOUR + number, 0x1F if node != "node3" else 0x0F, node)
    for start, node in ((9.3, "node3"), (15.7, "node1"), (21.2, "node3")):
        time = start * HOUR
        day.lsu_status(time, 2, node)
        day.activity(time + 3, 7, 4, f"storage unit on {node} is offline: I/O error, sector "
                                     f"{day.random.randint(10**6, 10**9)}")
        day.lsu_status(time + 400, 1, node)
        day.lsu_status(time + 1900, 0, node)
    day.server_status(15.9 * HOUR, 2, "node1")
    day.server_status(16.0 * HOUR, 0, "node1")
    day.abilities(16.0 * HOUR + 2, 0x1F, "node1")
    day.activity(18.0 * HOUR, 7, 3, "Kapazität von node2 über 80 %: Überprüfung nötig")
    day.activity(18.2 * HOUR, 7, 2, "容量の警告: node2 の使用率が 80 % を超えました")


def housekeeping(day):
    for hour in range(0, 24, 2):
        time = hour * HOUR + 0.25 * HOUR + day.random.randint(0, 300)
        day.activity(time, 8, 1, "removal of unreferenced segments started")
        day.activity(time + day.random.randint(300, 2400), 9, 1,
                     f"removal of unreferenced segments done: {day.random.randint(2, 400)} GiB freed")


def audits(day):
    for _ in range(34):
        time = day.random.triangular(6.5, 20, 10) * HOUR
        user = day.random.choice(USERS)
        day.audit(time, 3, f"user {user} logged in from 10.0.{day.random.randint(0, 9)}."
                           f"{day.random.randint(1, 250)}")
        if day.random.random() < 0.5:
            policy = day.random.choice(["gold", "silver", "mail", "files"])
            day.audit(day.soon(time), 5, f"policy {policy} changed by {user}: retention "
                                         f"{day.random.choice([14, 30, 90, 365])} days")
    day.audit(11.1 * HOUR, 6, "role operator given to m.okafor by admin", 4)
    day.audit(13.6 * HOUR, 3, 'login of "root" refused: wrong password, 5 times')


def file_shares(day):
    for _ in range(16):
        time = day.random.random() * 24 * HOUR
        share, host = day.random.randint(1, 40), day.random.randint(1, 9)
        if day.random.random() < 0.5:
            day.kelp(time, 2, 3, day.random.randint(10**6, 10**12), share, host,
                     f"quota of share {share} exceeded", 7)
        else:
            day.kelp(time, 3, 5, day.random.randint(30, 900), share, host,
                     f"share {share} not reachable")


def older_scheme(day):
    for number in range(14):
        day.legacy(day.random.random() * 24 * HOUR,
                   f"JOB={4100 + number} STATE={day.random.choice(['DONE', 'DONE', 'HELD'])} "
                   f"CLIENT={day.random.choice(CLIENTS[0])}")


def damage(day):
    def text(hour, kind, section):
        return f"EVENT{{version:1;type:{kind};id:0;date:{DAY + int(hour * HOUR)};{section}"

    day.damaged(1.5 * HOUR, "cut off in the middle of the line",
                text(1.5, 5, "CAPACITYEVENT{capacity:131941395333120;capacityphys:1121"))
    day.damaged(5.1 * HOUR, "no event at all, but a line of another log",
                "Mar 12 05:06:00 node2 kernel: sd 2:0:0:0: [sdc] Write Protect is off")
    day.damaged(7.3 * HOUR, "a type that does not exist",
                text(7.3, 12, "TAPEEVENT{slot:4;server:node1;}}"))
    day.damaged(8.8 * HOUR, "the envelope has no date",
                "EVENT{version:1;type:4;id:0;SERVERSTATUSEVENT{state:1;server:node2;}}")
    day.damaged(10.2 * HOUR, "the section belongs to another type",
                text(10.2, 3, "SERVERSTATUSEVENT{state:1;server:node3;}}"))
    day.damaged(12.6 * HOUR, "a server name longer than any event can carry",
                text(12.6, 4, f"SERVERSTATUSEVENT{{state:1;server:{'n' * 130};}}}}"))
    day.damaged(14.4 * HOUR, "the key of the message is spelt AuditMsg",
                text(14.4, 8, "AUDITEVENT{version:1;action:3;time:1710253440;loadSize:0;"
                              "AuditMsg:user admin logged in;}}"))
    day.damaged(17.7 * HOUR, "issue 3 without its file group",
                text(17.7, 9, "KELPEVENT{version:1;severity:2;issue:3;share_type:1;"
                              "issue_duration:60;name:4;host:5;string:quota exceeded;}}"))
    day.damaged(22.9 * HOUR, "for a data selection that does not exist",
                "dsid=99 " + text(22.9, 4, "SERVERSTATUSEVENT{state:0;server:node9;}}"))


def main():
    day = Day()
    for part in (hourly_capacity, backups, incidents, housekeeping, audits, file_shares,
                 older_scheme, damage):
        part(day)
    print(HEADER)
    for _, _, text in sorted(day.lines):
        print(text)


if __name__ == "__main__":
    main()
