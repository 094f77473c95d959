"""Programs that bind ports only to try: they look for a free one, or test what is taken. None of them
is a conflict, though all of them are refused. %P is a port that is held.
"""
PYTHON = "/usr/bin/python3"

FREE_PORT = """import socket
for port in range(%P, %P + 20):
    with socket.socket() as s:
        try:
            s.bind(('127.0.0.1', port))
        except OSError:
            continue
        print(port)
        break
"""
SCAN = """import socket
taken = []
for port in list(range(%P - 50, %P + 50)) + [8000, 8080, 9000]:
    s = socket.socket()
    try:
        s.bind(('', port))
    except OSError:
        taken.append(port)
    s.close()
print(taken)
"""
PICK_AND_TEST = """import contextlib, socket, unittest

def free_port(wanted):
    for port in (wanted, 0):
        with contextlib.closing(socket.socket()) as s:
            try:
                s.bind(('127.0.0.1', port))
                s.listen()
                return s.getsockname()[1]
            except OSError:
                pass

class Test(unittest.TestCase):
    def test_port(self):
        self.assertNotEqual(free_port(%P), %P)

    def test_is_refused_what_it_has_itself(self):
        with socket.create_server(('127.0.0.1', 0)) as first, socket.socket() as second:
            self.assertRaises(OSError, second.bind, first.getsockname())

unittest.main()
"""
GO = """package main

import ("fmt"; "net")

func main() {
\tfor port := %P; port < %P+20; port++ {
\t\tif l, err := net.Listen("tcp", fmt.Sprintf("127.0.0.1:%d", port)); err == nil {
\t\t\tl.Close()
\t\t\tfmt.Println(port)
\t\t\treturn
\t\t}
\t}
}
"""

# Name, command, files.
SEEKERS = [
    ("get-port", ["node", "seek.mjs"], {"seek.mjs":
     "import getPort from 'get-port';\nconsole.log(await getPort({port: %P, host: '127.0.0.1'}));\n"}),
    ("get-port, a list", ["node", "seek.mjs"], {"seek.mjs":
     "import getPort from 'get-port';\nconsole.log(await getPort({port: [%P, 5999, 6999]}));\n"}),
    ("get-port, goes on", ["node", "seek.mjs"], {"seek.mjs":
     "import getPort from 'get-port';\nconsole.log(await getPort({port: %P}));\nsetTimeout(() => {}, 2500);\n"}),
    ("detect-port", ["detect-port", "%P"], {}),
    ("portfinder", ["node", "seek.js"], {"seek.js":
     "require('portfinder').getPort({port: %P}, (e, port) => console.log(port));\n"}),
    ("portfinder, then jest", ["jest"], {"package.json": "{}", "one.test.js":
     "const portfinder = require('portfinder');\n"
     "test('takes another', async () => {\n  const port = await portfinder.getPortPromise({port: %P});\n"
     "  expect(port).not.toBe(%P);\n});\n"}),
    ("vitest, get-port", ["vitest", "run"], {"package.json": '{"type": "module"}', "one.test.js":
     "import getPort from 'get-port';\nimport { test, expect } from 'vitest';\n"
     "test('takes another', async () => { expect(await getPort({port: %P})).not.toBe(%P); });\n"}),
    ("jest, listens twice", ["jest"], {"package.json": "{}", "one.test.js":
     "const net = require('net');\ntest('is refused', done => {\n"
     "  const first = net.createServer().listen(0, '127.0.0.1', () => {\n"
     "    const second = net.createServer();\n"
     "    second.on('error', e => { expect(e.code).toBe('EADDRINUSE'); first.close(done); });\n"
     "    second.listen(first.address().port, '127.0.0.1');\n  });\n});\n"}),
    ("python, next free port", [PYTHON, "seek.py"], {"seek.py": FREE_PORT}),
    ("python, scan by binding", [PYTHON, "seek.py"], {"seek.py": SCAN}),
    ("python, unittest", [PYTHON, "seek.py"], {"seek.py": PICK_AND_TEST}),
    ("ruby, next free port", ["ruby", "seek.rb"], {"seek.rb":
     "require 'socket'\nport = %P\nbegin\n  TCPServer.new('127.0.0.1', port).close\nrescue Errno::EADDRINUSE\n"
     "  port += 1\n  retry\nend\nputs port\n"}),
    ("php, next free port", ["php", "seek.php"], {"seek.php":
     "<?php for ($p = %P; !($s = @stream_socket_server(\"tcp://127.0.0.1:$p\")); ++$p); fclose($s); echo $p;\n"}),
    ("go, next free port", ["./server"], {"main.go": GO}),
]
