// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtQuick.Templates as T
import DesignSystem
import Lumaro.UI

/// Everything that stands between people and their board, on a sheet that lies over it: opens and goes by itself.
Sheet {
    id: firstRun

    required property AppView view
    /// How this person comes in, once they have said so: "start", "code" or "link".
    property string door
    /// They want another room than the one that is set.
    property bool isElsewhere: false
    /// They have a room, and are asked for its address.
    property bool hasRoom: false
    readonly property bool isKeptHere: view.home.face.isKeptHere && !view.home.face.isStarting
    readonly property string stage: view.face.stage
    /// The page that it shows; it stays the last one while the sheet closes.
    property string page: wanted
    readonly property string wanted: {
        if (view.face.isChoosing)
            return "choosing";
        const canComeIn = ["welcome", "makeItYours", "offBoard", "refused", "bringThemOver"].includes(stage);
        if (view.home.face.needsServer)
            return "address";
        if (canComeIn && (door !== "" || stage === "makeItYours")) {
            const isNowhere = !view.home.face.isSet && (door === "" || door === "start");
            if (!isNowhere && !isElsewhere)
                return "comeIn";
            return view.home.face.canKeepHere && door !== "code" && !hasRoom ? "where" : "address";
        }
        return view.face.failure !== "" || stage === "board" ? "failure" : stage;
    }

    function chooseDoor(how: string): void {
        door = how;
        if (stage === "welcome")
            view.goTo("makeItYours");
    }
    function goBack(): void {
        view.home.forgetCheck();
        const hadRoom = hasRoom && page === "address" && view.home.face.canKeepHere;
        hasRoom = false;
        if (hadRoom)
            return;
        const wasElsewhere = isElsewhere;
        isElsewhere = false;
        if (wasElsewhere)
            return;
        // From the question for an address back to the digits.
        const wasWaiting = view.home.face.needsServer && door !== "";
        view.forgetPairingFailure();
        if (wasWaiting)
            return;
        door = "";
        if (stage === "makeItYours")
            view.goTo("welcome");
    }

    title: ""
    paperWidth: 520
    isDismissable: false
    visible: view.face.needsPerson
    // From here on nobody is to come in, unless they ask for it anew.
    onStageChanged: if (stage === "bringThemOver") door = ""
    onWantedChanged: if (view.face.needsPerson) page = wanted
    onIsKeptHereChanged: if (isKeptHere) isElsewhere = false
    onClosed: door = ""

    // The board is to be seen behind it.
    T.Overlay.modal: Shade {
        strength: 0.45
    }

    WelcomePage {
        visible: firstRun.page === "welcome"
        focus: visible
        onDoorChosen: door => firstRun.chooseDoor(door)
    }
    ComeInPage {
        visible: firstRun.page === "comeIn"
        focus: visible
        view: firstRun.view
        door: firstRun.door === "" ? "start" : firstRun.door
        onBackAsked: firstRun.goBack()
        onElsewhereAsked: firstRun.isElsewhere = true
    }
    AddressPage {
        visible: firstRun.page === "address"
        focus: visible
        home: firstRun.view.home
        isForCode: firstRun.view.home.face.needsServer
        onBackAsked: firstRun.goBack()
        onUsed: {
            firstRun.isElsewhere = false;
            firstRun.hasRoom = false;
        }
    }
    WherePage {
        visible: firstRun.page === "where"
        focus: visible
        home: firstRun.view.home
        onAddressAsked: firstRun.hasRoom = true
        onBackAsked: firstRun.goBack()
    }
    BringThemOverPage {
        visible: firstRun.page === "bringThemOver"
        focus: visible
        view: firstRun.view
        onCodeAsked: firstRun.chooseDoor("code")
        onDone: firstRun.view.goTo("")
    }
    WhichOfYouPage {
        visible: firstRun.page === "choosing"
        focus: visible
        view: firstRun.view
    }
    WelcomePage {
        visible: firstRun.page === "offBoard"
        focus: visible
        isReturn: true
        heading: qsTr("you're off the board")
        words: qsTr("it may well hang there still.\na code or your link brings you back.")
        startText: qsTr("or start a new one")
        onDoorChosen: door => firstRun.chooseDoor(door)
    }
    WelcomePage {
        visible: firstRun.page === "refused"
        focus: visible
        isReturn: true
        heading: qsTr("the board let this mac go")
        words: qsTr("what hangs here stays as it was.\na code or your link brings you back.")
        startText: qsTr("or leave it for good")
        onDoorChosen: door => door === "start" ? firstRun.view.leaveBoard() : firstRun.chooseDoor(door)
    }
    WordPage {
        visible: firstRun.page === "locked"
        focus: visible
        iconName: "refresh-cw"
        heading: qsTr("this mac's keychain didn't open")
        words: qsTr("your board is still here — it just needs the keychain to say yes.")
        yes: qsTr("ask again")
        onAgreed: firstRun.view.retryKeychain()
    }
    WordPage {
        visible: firstRun.page === "asksForFile"
        focus: visible
        iconName: "folder"
        heading: qsTr("there's no keychain here")
        words: qsTr("the key to your board needs a place. a file in your own folder will do; only you can read it.")
        yes: qsTr("a file will do")
        no: qsTr("rather not")
        onAgreed: firstRun.view.keepSecretsInFile(true)
        onRefused: firstRun.view.keepSecretsInFile(false)
    }
    WordPage {
        visible: firstRun.page === "failure"
        focus: visible
        iconName: "heart"
        heading: qsTr("that didn't work out")
        words: firstRun.view.face.failure
        yes: qsTr("all right")
        onAgreed: firstRun.view.forgetPairingFailure()
    }
}
