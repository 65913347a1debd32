"""An independent FTP client: ftp_judge.py PORT FOLDER stores every file of FOLDER as an upload, fetches each
back and compares, and prints what the device lists."""
import ftplib
import io
import pathlib
import sys

ftp = ftplib.FTP(encoding="cp1252")
ftp.connect("127.0.0.1", int(sys.argv[1]), timeout=20)
ftp.login("admin", "")
ftp.sendcmd("SITE UPLOAD BEGIN")
files = sorted(path for path in pathlib.Path(sys.argv[2]).iterdir() if path.is_file())
for path in files:
    ftp.storbinary("STOR " + path.name, io.BytesIO(path.read_bytes()))
ftp.sendcmd("SITE UPLOAD END")
for path in files:
    fetched = io.BytesIO()
    ftp.retrbinary("RETR " + path.name, fetched.write)
    if fetched.getvalue() != path.read_bytes() or ftp.size(path.name) != path.stat().st_size:
        sys.exit("differs: " + path.name)
print("\n".join(sorted(ftp.nlst())))
print("\n".join(sorted(name + " " + facts["size"] for name, facts in ftp.mlsd())))
ftp.delete(files[0].name)
print(len(ftp.nlst()))
ftp.quit()
