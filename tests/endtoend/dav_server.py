"""A WebDAV server for the tests: Apache on the loopback interface, with a folder of its own."""

import base64
import hashlib
import os
import pathlib
import shutil
import socket
import subprocess
import tempfile
from typing import NamedTuple

import desktop
import waiting

USER, PASSWORD = "ada", "correct-horse-battery"
START_DEADLINE = 20.0

CONFIGURATION = """
ServerRoot "{folder}"
ServerName localhost
DefaultRuntimeDir "{folder}"
PidFile "{folder}/pid"
ErrorLog "{folder}/errors"
LogFormat "%u %m %U %>s" line
CustomLog "{folder}/requests" line
Mutex pthread
Listen 127.0.0.1:{port}
StartServers 1
ServerLimit 1
ThreadsPerChild 8
MaxRequestWorkers 8
User www-data
Group www-data
LoadModule mpm_event_module /usr/lib/apache2/modules/mod_mpm_event.so
LoadModule authn_core_module /usr/lib/apache2/modules/mod_authn_core.so
LoadModule authn_file_module /usr/lib/apache2/modules/mod_authn_file.so
LoadModule authz_core_module /usr/lib/apache2/modules/mod_authz_core.so
LoadModule authz_user_module /usr/lib/apache2/modules/mod_authz_user.so
LoadModule auth_basic_module /usr/lib/apache2/modules/mod_auth_basic.so
LoadModule dav_module /usr/lib/apache2/modules/mod_dav.so
LoadModule dav_fs_module /usr/lib/apache2/modules/mod_dav_fs.so
DocumentRoot "{folder}/documents"
DavLockDB "{folder}/locks/db"
<Directory "{folder}/documents/dav">
    Dav On
    AuthType Basic
    AuthName "files"
    AuthUserFile "{folder}/users"
    Require valid-user
</Directory>
"""
TLS_CONFIGURATION = """
LoadModule ssl_module /usr/lib/apache2/modules/mod_ssl.so
SSLEngine on
SSLCertificateFile "{folder}/certificate.pem"
SSLCertificateKeyFile "{folder}/key.pem"
"""


class Request(NamedTuple):
    """One line of the access log."""

    user: str  # "-" where the server did not let in
    method: str
    path: str
    status: int


class DavServer:
    """Runs from its construction to `remove()`; may be stopped and started again between.

    "https" gives it a certificate that nobody else signed.
    """

    def __init__(self, scheme="http"):
        self._scheme = scheme
        self._folder = pathlib.Path(tempfile.mkdtemp(prefix="vexilo-dav-"))
        self._process = None
        self._hold_port()
        for name in ("documents/dav", "locks"):
            (self._folder / name).mkdir(parents=True)
        self.set_password(PASSWORD)
        configuration = CONFIGURATION
        if scheme == "https":
            self.make_certificate()
            configuration += TLS_CONFIGURATION
        (self._folder / "configuration").write_text(
            configuration.format(folder=self._folder, port=self._port), encoding="utf-8")
        if os.geteuid() == 0:
            # Started by root, the server works as another user, to whom these must belong.
            for path in [self._folder, *self._folder.rglob("*")]:
                shutil.chown(path, "www-data", "www-data")
        self.start()

    def _hold_port(self):
        """Keeps a port for the server alone, also while it is stopped."""
        self._holder = socket.socket()
        self._holder.bind(("127.0.0.1", 0))
        # From now on another socket may share it, if it asks for that as servers do.
        self._holder.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
        self._port = self._holder.getsockname()[1]

    def remove(self):
        if self._process:
            self.stop()
        self._holder.close()
        shutil.rmtree(self._folder)

    def start(self):
        with open(self._folder / "output", "ab") as output:
            self._process = desktop.start(
                ["/usr/sbin/apache2", "-DFOREGROUND", "-f", str(self._folder / "configuration")],
                stdout=output, stderr=output)
        waiting.until(self._answers, "the server answers", details=self.log,
                      deadline=START_DEADLINE)

    def _answers(self):
        if self._process.poll() is not None:
            raise AssertionError(f"The server ended at its start\n{self.log()}")
        with socket.socket() as client:
            return client.connect_ex(("127.0.0.1", self._port)) == 0

    def stop(self):
        """Whoever asks from now on is refused at once, as by a network that is down."""
        desktop.stop(self._process)
        self._process = None

    def listen(self):
        """A socket that takes connections in the place of the server, which is stopped."""
        listener = socket.socket()
        listener.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
        listener.settimeout(START_DEADLINE)
        listener.bind(("127.0.0.1", self._port))
        listener.listen()
        return listener

    @property
    def url(self):
        return f"{self._scheme}://{self.authority}/dav/"

    @property
    def authority(self):
        return f"127.0.0.1:{self._port}"

    @property
    def folder(self):
        """Where the files of the user are."""
        return self._folder / "documents" / "dav"

    def make_certificate(self):
        """Another one from the next start on."""
        subprocess.run(
            ["openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1",
             "-nodes", "-days", "2", "-subj", "/CN=127.0.0.1",
             "-keyout", str(self._folder / "key.pem"),
             "-out", str(self._folder / "certificate.pem")], check=True, capture_output=True)

    def set_password(self, password):
        """The only one from now on."""
        digest = base64.b64encode(hashlib.sha1(password.encode()).digest()).decode()
        (self._folder / "users").write_text(f"{USER}:{{SHA}}{digest}\n", encoding="utf-8")

    def requests(self):
        """All that was asked so far, the oldest first."""
        lines = self._read("requests").splitlines()
        return [Request(user, method, path, int(status))
                for user, method, path, status in (line.split() for line in lines)]

    def files(self):
        """All its files, those of its users and its logs."""
        return [path for path in self._folder.rglob("*") if path.is_file()]

    def log(self):
        """Everything that the server wrote down of its work."""
        return "".join(self._read(name) for name in ("requests", "errors", "output"))

    def _read(self, name):
        file = self._folder / name
        return file.read_text(encoding="utf-8", errors="replace") if file.exists() else ""
