#!/usr/bin/env python3
"""Prints the events of a queue of eventd as they arrive, and deletes each one after that.
  consumer.py [SOCKET [DSID]]
"""
import http.client
import json
import socket
import sys
import time


class UnixConnection(http.client.HTTPConnection):
    def connect(self):
        self.sock = socket.socket(socket.AF_UNIX)
        self.sock.settimeout(self.timeout)
        self.sock.connect(self.host)  # the "host" is the path of the socket


def call(connection, method, path):
    connection.request(method, path, headers={"Host": "eventd"})
    response = connection.getresponse()
    body = response.read()
    if response.status >= 400 and (method, response.status) != ("DELETE", 404):
        raise OSError(json.loads(body)["detail"])
    return json.loads(body) if method == "GET" else None


def consume(path, dsid, handle):
    connection = UnixConnection(path, 80, timeout=90)
    while True:
        try:
            # Waits up to 50 seconds for the first event; what is handled is deleted, so that what
            # comes first is always what is to be done next.
            for event in call(connection, "GET", f"/v1/queues/{dsid}/events?wait=50")["events"]:
                handle(event)
                call(connection, "DELETE", f"/v1/queues/{dsid}/events/{event['id']}")
        except (OSError, http.client.HTTPException) as problem:
            print(f"trying again: {problem}", file=sys.stderr)
            connection.close()
            time.sleep(1)


if __name__ == "__main__":
    consume(
        sys.argv[1] if len(sys.argv) > 1 else "/run/eventsystem/eventd.sock",
        sys.argv[2] if len(sys.argv) > 2 else "0",
        lambda event: print(event["id"], event["eventString"], flush=True),
    )
