"""The base of the tests of mirroring: a server, and as many devices as a test wants."""

import base64

import screen
import waiting
from bystander import Bystander
from case import ProgramTest
from cloud_device import ON, Device
from cloud_folder import CloudFolder
from dav_server import PASSWORD, USER, DavServer

# In seconds. An edit alone is held back for two, so that others can follow it: a test that is about
# something else looks at the window of the program, which does not wait then.
DEADLINE = 15.0


class MirroringTest(ProgramTest):
    """Each test ends with a look at what all sides keep."""

    def setUp(self):
        self.server = self.make_server()
        self.addCleanup(self.server.remove)
        self.cloud = CloudFolder(self.server.folder)
        self.passwords = [PASSWORD]  # all that are ever used
        self._devices = []
        self._bystander = Bystander(self)

    def make_server(self):
        return DavServer()

    # Devices

    def add_device(self, server=None, **options):
        """A device with an account on the server, if no other is given; nothing runs there yet."""
        return self._keep(Device(server or self.server, **options))

    def add_device_without_account(self, **options):
        return self._keep(Device(**options))

    def _keep(self, device):
        self.addCleanup(device.remove)
        self._devices.append(device)
        return device

    def start(self, *devices):
        for device in devices:
            device.adopt(lambda device=device: self.launch_on(device))

    def launch_on(self, device):
        return self.launch_in(device.home, environment=device.session.program_environment())

    def launch_beside(self, device):
        """Starts one more program in a device's home, from a session that knows no other one."""
        session = self.open_session(device.home, "second-session")
        session.start_keyring()
        device.set_password(PASSWORD, session)
        return self.launch_in(device.home, environment=session.program_environment())

    def start_mirrored(self, *descriptions):
        """A device that mirrors since its start, and has published these bills."""
        device = self.add_device(choice=ON)
        self.start(device)
        self.await_cloud(self.cloud.epochs, "the bills have a folder")
        if descriptions:
            self.save(device, *descriptions)
            self.look_at(device)
            self.expect_in_cloud(*reversed(descriptions))
        return device

    def start_pair(self, *descriptions):
        """Two devices that mirror, and know these bills."""
        first, second = self.start_mirrored(*descriptions), self.start_mirrored()
        second.expect_stored(*reversed(descriptions))
        return first, second

    def restart(self, device):
        device.terminate()
        self.start(device)

    def save(self, device, *descriptions):
        device.bills.save(*descriptions)

    def switch(self, device, on):
        """Turns mirroring on or off in the settings."""
        self.look_at(device)  # the sheet takes the keyboard
        device.switch(on)

    def look_at(self, *devices):
        """Goes to the window on each device, one after the other, upon which each one syncs."""
        for device in devices:
            self.look(device.vexilo)

    def look(self, vexilo):
        """Goes to a program's window from that of another program."""
        self._bystander.take_keyboard()
        vexilo.expect_active(False)
        screen.activate(vexilo.window)
        vexilo.expect_active()

    # What there is

    def expect_in_cloud(self, *descriptions):
        """Waits until the server holds these bills, newest first, and no other that lives."""
        self.await_cloud(lambda: self.cloud.descriptions() == list(descriptions),
                         f"the bills in the cloud are {descriptions}")

    def expect_shared_choice(self, on):
        """Waits until the server holds the choice that each device will find."""
        self.await_cloud(lambda: self.cloud.values() == {"icloud_sync": on}, f"the choice is {on}")

    def await_cloud(self, condition, what):
        return waiting.until(condition, what, details=self._details, deadline=DEADLINE)

    def expect_everywhere(self, *descriptions):
        """Waits until the server and every device hold these bills, and no other."""
        self.expect_in_cloud(*descriptions)
        for device in self._devices:
            device.expect_stored(*descriptions)

    def _details(self):
        return "\n".join([f"In the cloud: {self.cloud.descriptions()}", self.server.log(),
                          *(device.vexilo.output() for device in self._devices if device.vexilo)])

    def tearDown(self):
        for device in self._devices:
            if device.vexilo and device.vexilo.is_running():
                device.terminate()
            if device.store.path.exists():
                self.assertEqual(device.store.integrity(), "ok")
        self.assertTrue(self._places_of(USER))  # or it would be sought in the wrong places
        for password in self.passwords:
            self.assertEqual(self._places_of(password), [])
            both = base64.b64encode(f"{USER}:{password}".encode()).decode()
            self.assertEqual(self._places_of(both), [])

    def _places_of(self, text):
        """The files of the devices and the server with this text, outputs and logs included."""
        files = [file for device in self._devices for file in device.home.files()]
        return [file for file in files + self.server.files() if text.encode() in file.read_bytes()]
