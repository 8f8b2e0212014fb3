import QtQml

// One segment of a SegmentedPicker.
QtObject {
    required property string icon
    required property string name
}
