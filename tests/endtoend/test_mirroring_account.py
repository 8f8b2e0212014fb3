"""The account with the server: a wrong password, a new one, none yet, and another account."""

import pathlib

import waiting
from cloud_device import ON
from cloud_folder import CloudFolder
from dav_server import PASSWORD, USER, DavServer
from mirroring import MirroringTest
from online_accounts import OnlineAccounts

WRONG, NEW = "hunter2-and-a-half", "tr0ub4dor-and-three"


class Password(MirroringTest):
    def setUp(self):
        super().setUp()
        self.passwords += [WRONG, NEW]

    def test_with_a_wrong_one_bills_stay_here_and_with_the_right_one_they_follow(self):
        device = self.add_device(choice=ON)
        device.set_password(WRONG)
        self.start(device)
        self.save(device, "Breakfast")
        device.expect_said("The server refuses the password of ada@127.0.0.1")
        self.restart(device)
        device.expect_said("another is stored by: secret-tool store ")
        self.save(device, "Lunch")
        device.expect_stored("Lunch", "Breakfast")
        self.assertEqual(self.cloud.descriptions(), [])

        device.set_password(PASSWORD)
        self.restart(device)

        self.expect_everywhere("Lunch", "Breakfast")

    def test_a_wrong_one_is_not_tried_over_and_over(self):
        device = self.add_device(choice=ON)
        device.set_password(WRONG)
        self.start(device)
        device.expect_said("The server refuses the password")

        for name in ("Breakfast", "Lunch", "Dinner"):
            self.save(device, name)
            self.look_at(device)
        device.terminate()

        self.assertEqual(len(self.refusals()), 1)
        self.assertEqual(len(self.server.requests()), len(self.refusals()))

    def test_a_password_that_changes_while_the_program_runs(self):
        first, second = self.start_pair("Breakfast")
        self.server.set_password(NEW)
        self.save(first, "Lunch")
        first.expect_said("The server refuses the password")

        for device in (first, second):
            device.set_password(NEW)
        self.look_at(first)
        self.expect_in_cloud("Lunch", "Breakfast")
        self.look_at(second)

        self.expect_everywhere("Lunch", "Breakfast")

    def test_a_device_without_a_keyring_keeps_its_bills(self):
        device = self.add_device(choice=ON)
        device.session.stop_keyring()
        self.start(device)
        device.expect_said("There is no keyring that keeps passwords.")
        self.save(device, "Breakfast")
        self.restart(device)

        device.session.start_keyring()
        self.look_at(device)

        self.expect_everywhere("Breakfast")

    def refusals(self):
        return [request for request in self.server.requests() if request.status == 401]


class Account(MirroringTest):
    def test_one_that_is_set_up_while_the_program_runs_is_used(self):
        device = self.add_device_without_account(choice=ON)
        self.start(device)
        self.save(device, "Breakfast")

        device.set_account(self.server)

        self.expect_everywhere("Breakfast")

    def test_the_network_is_followed_only_where_there_is_one(self):
        device = self.add_device_without_account(choice=ON)
        self.start(device)
        self.save(device, "Breakfast")
        self.assertFalse(self.follows_network(device))

        device.set_account(self.server)

        self.expect_everywhere("Breakfast")
        waiting.until(lambda: self.follows_network(device), "the program follows the network")

    def test_the_desktops_own_account_is_used_as_soon_as_it_is_there(self):
        device = self.add_device_without_account(choice=ON)
        accounts = OnlineAccounts(device.session.bus)
        self.start(device)
        self.save(device, "Breakfast")

        accounts.add(self.server, USER, PASSWORD)

        self.expect_everywhere("Breakfast")

    def test_another_one_is_not_given_the_bills_before_the_user_says_so(self):
        device = self.start_mirrored("Breakfast")
        other = DavServer()
        self.addCleanup(other.remove)

        device.set_account(other)
        device.expect_said("This is another account than before.")
        self.save(device, "Lunch")
        self.restart(device)
        device.expect_said("This is another account than before.")
        device.terminate()
        self.assertEqual(list(other.folder.iterdir()), [])
        device.expect_stored("Lunch", "Breakfast")
        self.expect_in_cloud("Breakfast")

        self.start(device)
        self.switch(device, False)
        self.switch(device, True)
        self.await_cloud(lambda: CloudFolder(other.folder).descriptions() == ["Lunch", "Breakfast"],
                         "the bills are in the other account")
        self.expect_in_cloud("Breakfast")

    @staticmethod
    def follows_network(device):
        maps = pathlib.Path(f"/proc/{device.vexilo.process_id}/maps").read_text("utf-8")
        return "/networkinformation/" in maps
