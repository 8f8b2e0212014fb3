"""An independent model of the split, on the interpreter's own binary doubles.

Reads one split a line (bill, people, service, good, excellent, and the three options as 0 or 1; the
bill as a hexadecimal double) and answers with total, tip, grand total and share, each in hexadecimal,
and the explanation of the tip.
"""

import math
import sys


def cents(amount):
    return int(amount * 100.0) / 100.0


def answer(line):
    words = line.split()
    bill = float.fromhex(words[0])
    people, service, good, excellent = (int(word) for word in words[1:5])
    everyone, round_tip, round_share = (word == "1" for word in words[5:8])

    total = cents(bill)
    rate = {1: good, 2: excellent}.get(service, 0)
    base_tip = cents(total * float(rate) / 100.0)
    tip = base_tip * float(people) if everyone else base_tip
    if round_tip:
        tip = float(math.ceil(tip))
    grand_total = total + tip
    share = cents(grand_total / float(people))
    if round_share:
        share = float(math.ceil(share))
        grand_total = share * float(people)
    explanation = "(%.2f x %d)" % (base_tip, people) if everyone else ""
    figures = " ".join(value.hex() for value in (total, tip, grand_total, share))
    return figures + " " + explanation


for request in sys.stdin:
    print(answer(request))
