<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en">
<context>
    <name>CommandListView</name>
    <message>
        <source>Drop files here or press %1</source>
        <translation>Dateien hier ablegen oder %1 drücken</translation>
    </message>
</context>
<context>
    <name>MonitorWindow</name>
    <message>
        <source>&amp;Log</source>
        <translation>&amp;Protokoll</translation>
    </message>
    <message>
        <source>&amp;Debug lines of %1</source>
        <translation>&amp;Debug-Zeilen von %1</translation>
    </message>
    <message>
        <source>Queue monitor</source>
        <translation>Warteschlange</translation>
    </message>
    <message>
        <source>Add &amp;Files...</source>
        <translation>&amp;Dateien...</translation>
    </message>
    <message>
        <source>Add F&amp;older...</source>
        <translation>&amp;Ordner...</translation>
    </message>
    <message>
        <source>Ctrl+Shift+O</source>
        <translation>Ctrl+Shift+O</translation>
    </message>
    <message>
        <source>&amp;Save Digests...</source>
        <translation>&amp;Speichern...</translation>
    </message>
    <message>
        <source>C&amp;lear List</source>
        <translation>&amp;Liste leeren</translation>
    </message>
    <message>
        <source>Ctrl+Shift+Del</source>
        <translation>Ctrl+Shift+Del</translation>
    </message>
    <message>
        <source>&amp;Pause</source>
        <translation>&amp;Pause</translation>
    </message>
    <message>
        <source>&amp;Go On</source>
        <translation>&amp;Weiter</translation>
    </message>
    <message>
        <source>S&amp;top...</source>
        <translation>&amp;Alles abbrechen...</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>&amp;Queue</source>
        <translation>&amp;Warteschlange</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>Add files or folders, or drop them here. Each file becomes a command of the queue, which computes its SHA-256 digest.

The context menu of a row copies the digest, opens the folder, tries again or cancels.

Save Digests writes a file that sha256sum -c can check.</source>
        <translation>Fügen Sie Dateien oder Ordner hinzu, oder legen Sie sie hier ab. Jede Datei wird zu einem Befehl der Warteschlange, der ihre SHA-256-Prüfsumme berechnet.

Das Kontextmenü einer Zeile kopiert die Prüfsumme, öffnet den Ordner, versucht es erneut oder bricht ab.

Speichern schreibt die Prüfsummen in eine Datei, die sha256sum -c prüft.</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Über</translation>
    </message>
    <message>
        <source>Queue monitor %1, an example of the library Tarnwick</source>
        <translation>Warteschlange %1, ein Beispiel der Bibliothek Tarnwick</translation>
    </message>
    <message>
        <source>About Qt</source>
        <translation>Über Qt</translation>
    </message>
    <message>
        <source>Commands</source>
        <translation>Befehle</translation>
    </message>
    <message>
        <source>Add Folder</source>
        <translation>Ordner hinzufügen</translation>
    </message>
    <message>
        <source>Add Files</source>
        <translation>Dateien hinzufügen</translation>
    </message>
    <message>
        <source>Save Digests</source>
        <translation>Prüfsummen speichern</translation>
    </message>
    <message>
        <source>%1 exists. Overwrite it?</source>
        <translation>%1 existiert. Überschreiben?</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Alles abbrechen</translation>
    </message>
    <message>
        <source>Cancel all commands that have not finished?</source>
        <translation>Alle Befehle abbrechen, die noch nicht fertig sind?</translation>
    </message>
</context>
<context>
    <name>SaveCommand</name>
    <message>
        <source>A file of this name has come to exist.</source>
        <translation>Inzwischen gibt es eine Datei mit diesem Namen.</translation>
    </message>
</context>
<context>
    <name>SaveCommandData</name>
    <message>
        <source>Save the digests to %1</source>
        <translation>Speichern in %1</translation>
    </message>
</context>
<context>
    <name>SelectionMenu</name>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>Copy &amp;Digest</source>
        <translation>&amp;Prüfsumme kopieren</translation>
    </message>
    <message>
        <source>Ctrl+Shift+C</source>
        <translation>Ctrl+Shift+C</translation>
    </message>
    <message>
        <source>&amp;Open Folder</source>
        <translation>&amp;Ordner öffnen</translation>
    </message>
    <message>
        <source>&amp;Try Again</source>
        <translation>&amp;Erneut versuchen</translation>
    </message>
    <message>
        <source>C&amp;ancel Selected</source>
        <translation>Ausgewählte &amp;abbrechen</translation>
    </message>
</context>
<context>
    <name>StatusLook</name>
    <message>
        <source>Running</source>
        <translation>Läuft</translation>
    </message>
    <message>
        <source>Finished</source>
        <translation>Fertig</translation>
    </message>
    <message>
        <source>Cancelled</source>
        <translation>Abgebrochen</translation>
    </message>
    <message>
        <source>Failed</source>
        <translation>Fehlgeschlagen</translation>
    </message>
    <message>
        <source>Needs your answer</source>
        <translation>Braucht Antwort</translation>
    </message>
    <message>
        <source>Waiting</source>
        <translation>Wartet</translation>
    </message>
</context>
<context>
    <name>StatusPanel</name>
    <message>
        <source>Waiting for your answer</source>
        <translation>Wartet auf Ihre Antwort</translation>
    </message>
    <message>
        <source>Idle</source>
        <translation>Bereit</translation>
    </message>
    <message>
        <source>Running</source>
        <translation>Läuft</translation>
    </message>
    <message>
        <source>Paused</source>
        <translation>Pausiert</translation>
    </message>
    <message>
        <source>Stopping</source>
        <translation>Bricht ab</translation>
    </message>
    <message>
        <source>%1 of %2 files finished</source>
        <translation>%1 von %2 Dateien fertig</translation>
    </message>
    <message>
        <source>%1 failed</source>
        <translation>%1 fehlgeschlagen</translation>
    </message>
    <message>
        <source>%1 cancelled</source>
        <translation>%1 abgebrochen</translation>
    </message>
    <message>
        <source>%1 s left</source>
        <translation>noch %1 s</translation>
    </message>
    <message>
        <source>%1 min left</source>
        <translation>noch %1 min</translation>
    </message>
    <message>
        <source>%1/s</source>
        <translation>%1/s</translation>
    </message>
</context>
</TS>
