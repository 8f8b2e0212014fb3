"""The window is found again as large and where it was left."""

import screen
from case import EndToEndTest
from home import FIRST_RUN_PREFERENCES, MARKER

LEAST = (500, 800)
FIRST = (540, 880)
SCREEN = (1400, 1100)
SIZE, PLACE = (700, 900), (300, 60)


class WindowMemory(EndToEndTest):
    def setUp(self):
        super().setUp()
        self.file = self.home.file("state") / "Morrowick" / "Vexilo" / "window.ini"

    # What is remembered

    def test_the_size_and_the_place_are_found_again(self):
        for end in (self.quit, self.close):
            with self.subTest(end=end.__name__):
                vexilo = self.launch()
                before = self.change(vexilo)
                end(vexilo)

                self.expect_next(*before).quit()
                self.file.unlink()

    def test_the_end_of_a_session_is_no_crash(self):
        vexilo = self.launch()
        before = self.change_and_rest(vexilo)
        self.maximise(vexilo)
        vexilo.until(lambda: self.remembered()["maximized"] == "true", "it is remembered")

        self.terminate(vexilo)

        vexilo = self.launch_maximised()
        screen.press_keys("alt+F10")
        self.expect(vexilo, *before)

    def test_a_crash_takes_away_no_more_than_the_last_moment(self):
        vexilo = self.launch()
        before = self.change_and_rest(vexilo)
        vexilo.kill()

        self.expect_next(*before)

    def test_a_maximised_window_is_maximised_again_and_goes_back_to_its_size(self):
        vexilo = self.launch()
        before = self.change_and_rest(vexilo)
        self.maximise(vexilo)
        vexilo.quit()

        vexilo = self.launch_maximised()
        self.assertEqual(self.frame_size(vexilo), SCREEN)
        screen.press_keys("alt+F10")

        self.expect(vexilo, *before)

    def test_a_maximised_window_that_was_found_again_is_remembered_as_before(self):
        vexilo = self.launch()
        before = self.change_and_rest(vexilo)
        self.maximise(vexilo)
        vexilo.quit()
        vexilo = self.launch_maximised()
        vexilo.quit()

        vexilo = self.launch_maximised()
        screen.press_keys("alt+F10")

        self.expect(vexilo, *before)

    def test_a_minimised_window_is_found_as_it_was_before(self):
        vexilo = self.launch()
        before = self.change_and_rest(vexilo)
        screen.minimise(vexilo.window)
        self.terminate(vexilo)

        self.expect_next(*before)

    def test_a_window_that_is_not_touched_does_not_wander(self):
        vexilo = self.launch()
        before = self.change(vexilo)
        vexilo.quit()

        for _ in range(3):
            self.expect_next(*before).quit()

    # Where

    def test_it_is_no_preference(self):
        vexilo = self.launch()
        self.change(vexilo)
        vexilo.quit()

        self.assertEqual(self.home.preferences(), FIRST_RUN_PREFERENCES | MARKER)
        self.assertEqual([path for path in self.home.files() if path.name.startswith("window")],
                         [self.file])

    def test_a_relative_folder_for_states_is_not_used(self):
        vexilo = self.launch(environment={"XDG_STATE_HOME": "state"})
        self.change(vexilo)
        vexilo.quit()

        file = self.home.file(".local") / "state" / "Morrowick" / "Vexilo" / "window.ini"
        self.assertIn(f"width={SIZE[0]}", file.read_text(encoding="utf-8"))

    # What does not fit

    def test_a_window_beyond_the_screen_comes_back_onto_it(self):
        self.write(x=5000, y=-3000, width=700, height=900)

        vexilo = self.launch()

        x, y = screen.origin_of(vexilo.window)
        self.assertEqual(screen.size_of(vexilo.window), (700, 900))
        self.assertTrue(0 <= x <= SCREEN[0] - 700 and 0 <= y <= SCREEN[1] - 900, (x, y))

    def test_a_window_larger_than_the_screen_becomes_as_large_as_it(self):
        self.write(x=10, y=30, width=3000, height=3000, frameTop=20, frameBottom=5)

        vexilo = self.launch()

        self.assertEqual(screen.size_of(vexilo.window), (SCREEN[0], SCREEN[1] - 25))

    def test_a_window_smaller_than_it_may_be_has_its_least_size(self):
        self.write(x=10, y=30, width=20, height=20)

        self.assertEqual(screen.size_of(self.launch().window), LEAST)

    def test_nonsense_is_ignored_and_replaced(self):
        for text in (b"", b"\xff\x00" * 5000, b"[Window]\nwidth=wide\nheight=\n"):
            with self.subTest(text=text[:20]):
                self.file.parent.mkdir(parents=True, exist_ok=True)
                self.file.write_bytes(text)
                vexilo = self.launch()
                self.assertEqual(screen.size_of(vexilo.window), FIRST)
                before = self.change(vexilo)
                vexilo.quit()

                self.expect_next(*before).quit()

    def test_a_folder_that_cannot_be_written_is_harmless(self):
        self.home.file("state").rmdir()
        self.home.file("state").write_text("", encoding="utf-8")
        vexilo = self.launch()
        self.change(vexilo)

        self.assertEqual(vexilo.quit(), 0)

        self.assertEqual(screen.size_of(self.launch().window), FIRST)

    # Helpers

    def change(self, vexilo):
        """Gives the window another size and place, and returns what came of that."""
        window = vexilo.window
        screen.resize(window, *SIZE)
        vexilo.until(lambda: screen.size_of(window) == SIZE, "the window has the size")
        before = screen.origin_of(window)
        screen.move(window, *PLACE)
        vexilo.until(lambda: screen.origin_of(window) != before, "the window has moved")
        return SIZE, screen.origin_of(window)

    def launch_maximised(self):
        """Starts the program, whose window was maximised the last time."""
        vexilo = self.launch()
        vexilo.until(lambda: screen.is_maximised(vexilo.window), "the window is maximised")
        return vexilo

    def change_and_rest(self, vexilo):
        """The same, once it is remembered."""
        (width, height), (x, y) = self.change(vexilo)
        wanted = {"width": str(width), "height": str(height), "x": str(x), "y": str(y)}
        vexilo.until(lambda: wanted.items() <= self.remembered().items(), "it is remembered")
        return (width, height), (x, y)

    def maximise(self, vexilo):
        screen.press_keys("alt+F10")
        vexilo.until(lambda: self.frame_size(vexilo) == SCREEN, "the window fills the screen")

    def frame_size(self, vexilo):
        """The size of the window with what the window manager draws around it."""
        left, right, top, bottom = screen.frame_of(vexilo.window)
        width, height = screen.size_of(vexilo.window)
        return width + left + right, height + top + bottom

    def expect_next(self, size, place):
        vexilo = self.launch()
        self.expect(vexilo, size, place)
        return vexilo

    def expect(self, vexilo, size, place):
        window = vexilo.window
        vexilo.until(lambda: (screen.size_of(window), screen.origin_of(window)) == (size, place),
                     f"the window has the size {size} at {place}")

    def quit(self, vexilo):
        self.assertEqual(vexilo.quit(), 0)

    def close(self, vexilo):
        screen.press_keys("alt+F4")
        self.assertEqual(vexilo.await_exit(), 0)

    def terminate(self, vexilo):
        self.assertEqual(vexilo.terminate(), 0)

    def remembered(self):
        if not self.file.exists():
            return {}
        lines = self.file.read_text(encoding="utf-8").splitlines()
        return dict(line.split("=", 1) for line in lines if "=" in line)

    def write(self, **values):
        self.file.parent.mkdir(parents=True)
        lines = [f"{key}={value}\n" for key, value in values.items()]
        self.file.write_text("[Window]\n" + "".join(lines), encoding="utf-8")
