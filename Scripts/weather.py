# SPDX-License-Identifier: Apache-2.0
"""A forecast service for tests and demonstrations: Open-Meteo's API with the weather that it is told."""
import http.server
import json
import threading
import urllib.parse


class Forecasts:
    """Answers with one weather everywhere, but for the places that have their own, until it is out of order."""

    def __init__(self, **readings):
        self.everywhere, self.places = readings, {}
        self.works, self.asked = True, []
        service = self

        class Answers(http.server.BaseHTTPRequestHandler):
            def do_GET(self):
                service.asked.append(self.path)
                self.send_response(200 if service.works else 500)
                self.end_headers()
                self.wfile.write(json.dumps(service.forecast(self.path)).encode())

            def log_message(self, *_):
                pass

        self.http = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Answers)
        self.url = f"http://127.0.0.1:{self.http.server_port}"
        threading.Thread(target=self.http.serve_forever, daemon=True).start()

    def at(self, latitude, longitude, **readings):
        """The weather within a degree of that place."""
        self.places[(latitude, longitude)] = readings

    def forecast(self, path):
        query = urllib.parse.parse_qs(urllib.parse.urlsplit(path).query)
        near = (float(query["latitude"][0]), float(query["longitude"][0]))
        readings = next((own for place, own in self.places.items() if all(abs(a - b) < 1 for a, b in zip(place, near))), self.everywhere)
        return {"current": {"is_day": 1, "weather_code": 3, **readings}, "daily": {}}
