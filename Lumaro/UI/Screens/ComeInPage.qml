// SPDX-License-Identifier: Apache-2.0
import QtQuick
import DesignSystem
import Lumaro.UI

/// What this person is called, and the code or link if they have one. The last digit, or Enter, goes on.
SheetPage {
    id: page

    required property AppView view
    /// "start", "code" or "link".
    required property string door
    readonly property bool isStart: door === "start"
    readonly property string fault: view.face.failure

    signal backAsked
    signal elsewhereAsked

    function goOn(): void {
        if (page.view.face.isWorking)
            return;
        page.view.setName(name.text);
        if (page.isStart)
            page.view.startOurBoard();
        else if (page.door === "link")
            page.view.joinByLink(link.text);
        else if (digits.digits.length < digits.count)
            digits.forceActiveFocus(Qt.TabFocusReason);
        else
            page.view.joinByCode(digits.digits);
    }
    // The focus goes to the first thing that is missing: the name, or the code or link. The name is filled in here and
    // not bound, so that nothing that the application hears of takes away what is being typed.
    function settle(): void {
        // Pages are hidden once more as they go.
        if (name.text === "" && view)
            name.text = view.face.myName === "" ? view.suggestedName : view.face.myName;
        const isKnown = !isStart && name.text !== "";
        name.focus = !isKnown;
        name.selectAll();
        digits.focus = isKnown && door === "code";
        link.focus = isKnown && door === "link";
    }
    function nameGiven(): void {
        if (page.door === "code")
            digits.forceActiveFocus(Qt.TabFocusReason);
        else if (page.door === "link" && link.text === "")
            link.forceActiveFocus(Qt.TabFocusReason);
        else
            page.goOn();
    }
    function forgetFault(): void {
        if (page.fault !== "")
            page.view.forgetPairingFailure();
    }

    onFaultChanged: {
        if (fault === "" || !visible)
            return;
        if (door === "code") {
            digits.clear();
            digits.forceActiveFocus(Qt.TabFocusReason);
        } else if (door === "link") {
            link.takeKeys();
        } else {
            name.takeKeys();
        }
    }
    onVisibleChanged: settle()
    onDoorChanged: settle()
    Component.onCompleted: settle()

    PageHead {
        text: page.isStart ? qsTr("make it yours") : qsTr("come on over")
        onBackAsked: page.backAsked()
    }
    Field {
        id: name

        width: parent.width
        focus: true
        label: qsTr("what do they call you?")
        placeholder: qsTr("your name")
        maximumLength: 40
        fault: page.isStart ? page.fault : ""
        helper: page.isStart ? qsTr("it stands on what you put up.") : ""
        onAccepted: page.nameGiven()
        onEdited: page.forgetFault()
    }
    DigitsField {
        id: digits

        visible: page.door === "code"
        width: parent.width
        label: qsTr("the six digits they read out")
        fault: page.fault
        helper: qsTr("they find them under “bring them over”.")
        onCompleted: page.goOn()
        onAccepted: page.goOn()
        onEdited: page.forgetFault()
    }
    Field {
        id: link

        visible: page.door === "link"
        width: parent.width
        label: qsTr("the link they sent you")
        placeholder: qsTr("paste it here")
        fault: page.fault
        helper: qsTr("the whole message will do.")
        onAccepted: page.goOn()
        onEdited: page.forgetFault()
    }
    Body {
        visible: page.door === "code" && !page.view.home.face.isSet && page.view.home.face.nearby !== ""
        width: parent.width
        isSmall: true
        isSoft: true
        text: qsTr("in this network there is the room of %1. the code is tried there.").arg(page.view.home.face.nearby)
    }
    PaperButton {
        width: parent.width
        kind: PaperButton.Primary
        enabled: !page.view.face.isWorking
        text: {
            if (page.view.face.isWorking)
                return qsTr("just a moment…");
            return page.isStart ? qsTr("hang up our board") : qsTr("come in");
        }
        onClicked: page.goOn()
    }
    HomeLine {
        visible: page.door !== "link" && page.view.home.face.isSet && page.view.home.face.isChangeable
        home: page.view.home
        onElsewhereAsked: page.elsewhereAsked()
    }
}
