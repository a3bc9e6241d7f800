// The quiet sentence under a control.
import Velotap

Label {
    kind: "caption"
}
