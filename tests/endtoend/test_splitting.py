"""The figures that the window shows for what is typed and pressed."""

import screen
import tree
from case import EndToEndTest
from tree import Role

EVERYONE, ROUND_TIP, ROUND_SHARE = "Everyone pays the tip", "Round up tip", "Round up share"

# Bill, service, people, switches, and the three rows of the results.
WORKED_EXAMPLES = {
    "poor service gives no tip":
        ("100", "Poor", 3, [],
         ("TOTAL $100.00", "Tip $0.00", "Share per person $33.33")),
    "good service gives five per cent":
        ("100", "Good", 3, [],
         ("TOTAL $105.00", "Tip $5.00", "Share per person $35.00")),
    "a rounded share raises the total":
        ("100", "Excellent", 3, [ROUND_SHARE],
         ("TOTAL $111.00", "Tip $10.00", "Share per person $37.00")),
    "everyone pays the whole tip":
        ("100", "Good", 4, [EVERYONE],
         ("TOTAL $120.00", "Tip (5.00 x 4) $20.00", "Share per person $30.00")),
    "a rounded tip is a whole amount":
        ("33.33", "Good", 2, [ROUND_TIP],
         ("TOTAL $35.33", "Tip $2.00", "Share per person $17.66")),
    "cents are cut":
        ("10.019", "Good", 1, [],
         ("TOTAL $10.51", "Tip $0.50", "Share per person $10.51")),
    "the tip is rounded before the share":
        ("33.33", "Good", 2, [ROUND_TIP, ROUND_SHARE],
         ("TOTAL $36.00", "Tip $2.00", "Share per person $18.00")),
    "nobody pays a tip for poor service":
        ("100", "Poor", 4, [EVERYONE, ROUND_TIP],
         ("TOTAL $100.00", "Tip (0.00 x 4) $0.00", "Share per person $25.00")),
    "thousands are grouped":
        ("1234567.5", "Poor", 2, [],
         ("TOTAL $1,234,567.50", "Tip $0.00", "Share per person $617,283.75")),
}


class Splitting(EndToEndTest):
    def test_typing_at_the_start_enters_the_bill_without_a_click(self):
        vexilo = self.launch()

        screen.type_text("100")

        vexilo.expect_bill_text("100")
        vexilo.expect_figures("TOTAL $105.00", "Tip $5.00", "Share per person $52.50")

    def test_the_worked_examples_read_right(self):
        for claim, (bill, service, people, switches, figures) in WORKED_EXAMPLES.items():
            with self.subTest(claim):
                vexilo = self.launch_fresh()

                vexilo.type_bill(bill)
                self.choose_people(vexilo, people)
                vexilo.choose_service(service)
                for name in switches:
                    vexilo.switch(name)

                vexilo.expect_figures(*figures)
                vexilo.stop()

    def test_every_key_stroke_updates_the_figures(self):
        vexilo = self.launch()
        vexilo.focus_bill()

        for key, figures in {
            "1": ("TOTAL $1.05", "Tip $0.05", "Share per person $0.52"),
            "2": ("TOTAL $12.60", "Tip $0.60", "Share per person $6.30"),
            "period": ("TOTAL $12.60", "Tip $0.60", "Share per person $6.30"),
            "5": ("TOTAL $13.12", "Tip $0.62", "Share per person $6.56"),
            "0": ("TOTAL $13.12", "Tip $0.62", "Share per person $6.56"),
            "BackSpace": ("TOTAL $13.12", "Tip $0.62", "Share per person $6.56"),
        }.items():
            screen.press_keys(key)
            vexilo.expect_figures(*figures)

        vexilo.expect_bill_text("12.5")

    def test_a_bill_set_by_assistive_software_counts(self):
        vexilo = self.launch()

        vexilo.set_bill("250")

        vexilo.expect_figures("TOTAL $262.50", "Tip $12.50", "Share per person $131.25")

    def test_a_negative_bill_is_split_as_it_stands(self):
        vexilo = self.launch()

        vexilo.set_bill("-10")

        vexilo.expect_figures("TOTAL -$10.50", "Tip -$0.50", "Share per person -$5.25")

    def test_people_are_added_and_taken_away(self):
        vexilo = self.launch()
        vexilo.set_bill("90")
        vexilo.expect_people(2)

        vexilo.press_button("More people")
        vexilo.expect_people(3)
        vexilo.expect_figures("TOTAL $94.50", "Tip $4.50", "Share per person $31.50")

        vexilo.press_button("Fewer people")
        vexilo.expect_people(2)
        vexilo.expect_figures("TOTAL $94.50", "Tip $4.50", "Share per person $47.25")

    def test_one_person_is_the_least(self):
        self.home.write_preferences(people="2", bill="40")
        vexilo = self.launch()

        for _ in range(3):
            vexilo.press_button("Fewer people")
        vexilo.expect_people(1)
        vexilo.press_button("More people")

        vexilo.expect_people(2)

    def test_one_service_is_chosen_at_a_time(self):
        vexilo = self.launch()
        self.assertEqual(vexilo.checked(Role.RADIO_BUTTON), ["Good"])

        for name in ("Poor", "Excellent", "Good", "Good"):
            vexilo.choose_service(name)

    def test_the_service_is_a_group_of_three_named_choices(self):
        vexilo = self.launch()
        services = vexilo.expect(Role.PANEL, "Service")

        names = [tree.name_of(node) for node in tree.find_all(services, Role.RADIO_BUTTON)]

        self.assertEqual(names, ["Poor", "Good", "Excellent"])

    def test_every_switch_goes_on_and_off(self):
        vexilo = self.launch()

        for name in (EVERYONE, ROUND_TIP, ROUND_SHARE):
            vexilo.expect_checked(Role.CHECK_BOX, name, False)
            vexilo.switch(name, True)
            self.assertEqual(vexilo.checked(Role.CHECK_BOX), [name])
            vexilo.switch(name, False)

    def test_a_switch_turned_off_takes_its_effect_back(self):
        vexilo = self.launch()
        vexilo.set_bill("100")

        vexilo.switch(EVERYONE, True)
        vexilo.expect_figures("TOTAL $110.00", "Tip (5.00 x 2) $10.00", "Share per person $55.00")
        vexilo.switch(EVERYONE, False)

        vexilo.expect_figures("TOTAL $105.00", "Tip $5.00", "Share per person $52.50")

    def launch_fresh(self):
        self.home.write_preferences()
        return self.launch()

    def choose_people(self, vexilo, count):
        for shown in range(3, count + 1):
            vexilo.press_button("More people")
            vexilo.expect_people(shown)
        if count == 1:
            vexilo.press_button("Fewer people")
            vexilo.expect_people(1)
