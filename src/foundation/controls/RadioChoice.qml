import QtQml

// One choice of a RadioGroup: its text, and the number that stands for it, which is not negative.
QtObject {
    required property string text
    required property int value
}
