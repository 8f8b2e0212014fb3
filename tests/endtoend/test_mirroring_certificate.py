"""A server whose certificate nobody else signed."""

from cloud_device import ON
from dav_server import DavServer
from mirroring import MirroringTest


class OwnCertificate(MirroringTest):
    def make_server(self):
        return DavServer("https")

    def test_it_is_refused_unless_the_user_accepts_it(self):
        device = self.add_device(choice=ON)
        self.start(device)
        self.save(device, "Breakfast")
        device.expect_said("the server's certificate is not trusted")
        self.look_at(device)
        self.assertEqual(self.server.requests(), [])

        device.set_account(self.server, accept_self_signed="true")

        self.expect_in_cloud("Breakfast")

    def test_another_one_is_not_accepted_before_the_user_switches_off_and_on(self):
        device = self.add_device()
        device.set_account(self.server, accept_self_signed="true")
        self.start(device)
        self.save(device, "Breakfast")
        self.switch(device, True)
        self.expect_in_cloud("Breakfast")
        device.terminate()

        self.server.stop()
        self.server.make_certificate()
        self.server.start()
        before = len(self.server.requests())
        self.start(device)
        device.expect_said("the server's certificate has changed")
        self.save(device, "Lunch")
        self.look_at(device)
        device.terminate()
        self.assertEqual(len(self.server.requests()), before)

        self.start(device)
        self.switch(device, False)
        self.switch(device, True)
        self.expect_in_cloud("Lunch", "Breakfast")
