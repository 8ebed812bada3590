"""The far end of the test's links: a TCP service in a network namespace of its own. A client sends the number of bytes
that it wants as eight bytes, then what it likes until it closes its side; then it gets what it wanted."""
import socket
import struct
import threading


def serve(client):
    with client, client.makefile("rb") as incoming:
        wanted = struct.unpack("!Q", incoming.read(8))[0]
        while incoming.read(1 << 16):
            pass
        client.sendall(bytes(wanted))


def main():
    with socket.create_server(("0.0.0.0", 5001)) as listener:
        print("ready", flush=True)
        while True:
            client, _ = listener.accept()
            threading.Thread(target=serve, args=(client,), daemon=True).start()


main()
