#!/usr/bin/env python3
"""Self-test of the service simulator: starts it on a free port and checks
its endpoints and fault modes over real HTTP."""

import json
import os
import subprocess
import sys
import unittest
import urllib.error
import urllib.request

HERE = os.path.dirname(os.path.abspath(__file__))
SIMULATOR = os.path.join(HERE, "simulator.py")


class SimulatorTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.process = subprocess.Popen([sys.executable, SIMULATOR, "--port", "0"],
                                       stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        line = cls.process.stdout.readline().split()
        cls.base = "http://127.0.0.1:%s" % line[1]

    @classmethod
    def tearDownClass(cls):
        cls.process.terminate()
        cls.process.wait(10)

    def fetch(self, path, body=None):
        request = urllib.request.Request(self.base + path, data=body)
        try:
            with urllib.request.urlopen(request, timeout=10) as reply:
                return reply.status, reply.read()
        except urllib.error.HTTPError as error:
            return error.code, error.read()

    def test_usage_record_is_answered_and_recorded(self):
        status, body = self.fetch("/desktop/usage/click.php", b'{"app_key":"{k}"}')
        self.assertEqual((status, json.loads(body)), (200, {"status": "success", "message": ""}))
        records = json.loads(self.fetch("/_sim/records?path=/desktop/usage/click.php")[1])
        self.assertEqual(records[-1]["body"], '{"app_key":"{k}"}')


if __name__ == "__main__":
    unittest.main()
