#!/usr/bin/env python3
"""A feature service for tests: prints its port, serves until it is ended.

/pages    25 points in pages of at most 10
/cut      the same points, but no paging
/stuck    a service whose second page is its first
/alike    25 points that differ by their id alone
/endless  pages without an end
/deep     a layer that is nested 200,000 deep
/many     20 MiB of empty lists, packed
/broken   an answer that is no JSON
/fault    a fault that the service reports
/slow     no answer at all
/trickle  a byte now and then
/astray   a redirection to /slow
"""
import gzip
import http.server
import json
import sys
import time
import urllib.parse

LAYER = {
    "id": 3, "name": "towns", "type": "Feature Layer", "geometryType": "esriGeometryPoint",
    "description": "Towns", "objectIdField": "OID", "maxRecordCount": 10,
    "extent": {"xmin": 0, "ymin": 0, "xmax": 24, "ymax": 48, "spatialReference": {"wkid": 4326}},
    "fields": [
        {"name": "OID", "type": "esriFieldTypeOID", "alias": "OID"},
        {"name": "town", "type": "esriFieldTypeString", "alias": "The town"},
        {"name": "kind", "type": "esriFieldTypeSmallInteger", "alias": "kind",
         "domain": {"type": "codedValue", "codedValues": [{"name": "small", "code": 1},
                                                          {"name": "large", "code": 2}]}},
        {"name": "seen", "type": "esriFieldTypeDate", "alias": "seen"},
        {"name": "Shape", "type": "esriFieldTypeGeometry", "alias": "Shape"}],
}
ROOT = {"layers": [{"id": 0, "name": "all", "type": "Group Layer", "subLayerIds": [3]},
                   {"id": 3, "name": "towns", "type": "Feature Layer", "subLayerIds": None}]}


PACKED = {"many": gzip.compress(b'{"layers":[[]' + b",[]" * 7_000_000 + b"]}", 1),
          "deep": gzip.compress(b'{"fields":' + b"[" * 200_000 + b"]" * 200_000 + b"}")}


def feature(number, query, service):
    wanted = query.get("outFields", ["*"])[0].split(",")
    values = {"OID": number, "town": f"town {number}", "kind": 1 + number % 2,
              "seen": None if number == 0 else 1000 * number + 1}
    if service == "alike":
        values.update(town="town", kind=1, seen=None)
    entry = {"attributes": {name: value for name, value in values.items() if name in wanted}}
    if query.get("returnGeometry") == ["true"]:
        entry["geometry"] = None if number == 1 else {"x": number, "y": 2 * number}
    return entry


def page(service, query):
    size = sys.maxsize if service == "endless" else 25
    first = 0 if service in ("cut", "stuck") else int(query.get("resultOffset", ["0"])[0])
    last = min(size, first + min(10, int(query.get("resultRecordCount", ["10"])[0])))
    return {"features": [feature(number, query, service) for number in range(first, last)],
            "exceededTransferLimit": last < size}


def answer(path, query):
    service, _, rest = path.strip("/").partition("/")
    if service == "slow":
        time.sleep(60)
    if service == "fault":
        return {"error": {"code": 499, "message": "Token Required"}}
    if service not in ("pages", "cut", "stuck", "alike", "endless"):
        return None
    layer = dict(LAYER, advancedQueryCapabilities={"supportsPagination": service != "cut"})
    return {"": ROOT, "layers": {"layers": [layer]}, "3": layer,
            "3/query": page(service, query)}.get(rest)


class Handler(http.server.SimpleHTTPRequestHandler):
    def send_packed(self, text):
        self.send_response(200)
        self.send_header("Content-Encoding", "gzip")
        self.end_headers()
        self.wfile.write(text)

    def trickle(self):
        self.send_response(200)
        self.end_headers()
        for _ in range(200):
            self.wfile.write(b" ")
            time.sleep(0.3)

    def do_GET(self):
        address = urllib.parse.urlsplit(self.path)
        service = address.path.split("/")[1]
        if service in PACKED:
            return self.send_packed(PACKED[service])
        if service == "trickle":
            return self.trickle()
        if service == "astray":
            self.send_response(302)
            self.send_header("Location", "/slow" + self.path)
            return self.end_headers()
        content = answer(address.path, urllib.parse.parse_qs(address.query))
        if content is None and not address.path.startswith("/broken"):
            self.send_error(404)
            return
        text = b"<html>" if content is None else json.dumps(content).encode()
        self.send_response(200)
        self.end_headers()
        self.wfile.write(text)

    def log_message(self, *_):
        pass


server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
server.daemon_threads = True
print(server.server_port, flush=True)
server.serve_forever()
