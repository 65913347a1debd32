"""A client in the middle of a file: half_upload.py PORT FIRST says "sent" and waits until it is ended. FIRST is the
connection that the system ends first with it, "data" or "control": it ends the lower descriptors first."""
import ftplib
import os
import sys

lower = os.dup(0)
ftp = ftplib.FTP()
ftp.connect("127.0.0.1", int(sys.argv[1]), timeout=20)
ftp.login("admin", "")
data = ftp.transfercmd("STOR half")
data.sendall(b"half of the file" * 1000)
if sys.argv[2] == "data":
    os.dup2(data.fileno(), lower)
    data.close()
print("sent", flush=True)
sys.stdin.read()
