; A small text adventure. The tale is a file of macros, chosen with -DTALE='"keeper.inc"'; the rules are here:
; rooms with exits, things that can be carried, one door that opens for the right thing, one deed that ends the tale.

%include "common.inc"

NOWHERE equ 0FFh
CARRIED equ 0FEh

; room NAME, DESCRIPTION, north, south, east, west
%macro room 6
        dw %%name, %%text
        db %3, %4, %5, %6
        section .text2
%%name: db %1, '$'
%%text: db %2, '$'
        section .text
%endmacro
; thing WORD (four letters), NAME, DESCRIPTION, room, points for taking it
%macro thing 5
        db %1
        dw %%name, %%text
        db %4, %5
        section .text2
%%name: db %2, '$'
%%text: db %3, '$'
        section .text
%endmacro

        section .text2 follows=.text

        section .text
start:
        call readSwitches
        mov ax, 3
        int 10h
        mov si, things
        mov di, places
        mov cx, THINGS
.place: mov al, [si + 8]
        mov [di], al
        add si, 10
        inc di
        loop .place
        mov byte [here], 0
        mov byte [opened], 0
        mov bl, 0Eh
        mov si, taleTitle
        call print
        mov bl, 7
        mov si, taleIntro
        call print
        call look

turn:
        cmp byte [ended], 0
        jne theEnd
        mov bl, 0Ah
        mov si, prompt
        call print
        call readLine
        cmp byte [line], 0
        je turn
        inc word [moves]
        mov bx, line
        call word4                      ; eax = verb
        mov [verb], eax
        call word4
        mov [noun], eax
        mov si, verbs
.try:   mov eax, [si]
        or eax, eax
        jz .unknown
        cmp eax, [verb]
        je .found
        add si, 6
        jmp .try
.found: call [si + 4]
        jmp turn
.unknown:
        mov si, saysWhat
        call say
        jmp turn

theEnd:
        mov bl, 0Eh
        mov si, taleEnd
        call print
        cmp byte [selfPlay], PLAY
        jne .done
        mov si, saysKey
        call say
        call waitKey
.done:  jmp quit

; --- Deeds -----------------------------------------------------------------------------------------------------------

goNorth: xor bx, bx
        jmp go
goSouth: mov bx, 1
        jmp go
goEast: mov bx, 2
        jmp go
goWest: mov bx, 3
go:     call roomAt
        mov al, [si + bx + 4]
        cmp al, NOWHERE
        je .noWay
        ; The door of the tale stands between two rooms.
        cmp al, DOOR_TO
        jne .free
        cmp byte [opened], 0
        jne .free
        mov si, taleLocked
        jmp say
.free:  mov [here], al
        jmp look
.noWay: mov si, saysNoWay
        jmp say

look:   call roomAt
        push si
        mov si, [si]
        mov bl, 0Fh
        call print
        mov si, newLine
        call print
        pop si
        mov si, [si + 2]
        mov bl, 7
        call print
        mov si, newLine
        call print
        mov al, [here]
        mov dx, saysHere
        jmp list

inventory:
        mov al, CARRIED
        mov dx, saysCarry
; Lists the things whose place is al, each behind the text at dx.
list:   mov [wanted], al
        xor bp, bp
.next:  mov al, [places + bp]
        cmp al, [wanted]
        jne .skip
        mov si, dx
        mov bl, 0Bh
        push dx
        call print
        call thingAt
        mov si, [si + 4]
        call print
        mov si, newLine
        call print
        pop dx
.skip:  inc bp
        cmp bp, THINGS
        jb .next
        ret

take:   call findThing
        jc .not
        mov al, [here]
        cmp [places + bp], al
        jne .not
        mov byte [places + bp], CARRIED
        call thingAt
        movzx ax, byte [si + 9]
        add [score], ax
        mov byte [si + 9], 0            ; counts once
        mov bx, 900
        mov al, 3
        call tone
        mov cx, 3
.ring:  call waitFrame
        call soundTick
        loop .ring
        mov si, saysTaken
        jmp say
.not:   mov si, saysNotHere
        jmp say

drop_:  call findThing
        jc .not
        cmp byte [places + bp], CARRIED
        jne .not
        mov al, [here]
        mov [places + bp], al
        mov si, saysDropped
        jmp say
.not:   mov si, saysNotCarried
        jmp say

examine:
        call findThing
        jc .room
        mov al, [places + bp]
        cmp al, CARRIED
        je .seen
        cmp al, [here]
        jne .room
.seen:  call thingAt
        mov si, [si + 6]
        jmp say
.room:  mov si, saysNothing
        jmp say

; The door opens for whoever carries its key; the tale ends where its last deed is done.
use:    cmp byte [places + DOOR_KEY], CARRIED
        jne .lamp
        mov al, [here]
        cmp al, DOOR_FROM
        jne .lamp
        cmp byte [opened], 0
        jne .lamp
        mov byte [opened], 1
        add word [score], 20
        mov si, taleOpened
        jmp say
.lamp:  mov al, [here]
        cmp al, END_ROOM
        jne .nothing
        cmp byte [places + END_THING], CARRIED
        jne .missing
        cmp byte [places + END_THING2], CARRIED
        jne .missing
        add word [score], 50
        mov byte [ended], 1
        ret
.missing:
        mov si, taleMissing
        jmp say
.nothing:
        mov si, saysNothingHappens
        jmp say

help:   mov si, saysHelp
        jmp say

points: mov ax, [score]
        push es
        push cs
        pop es
        mov di, digits
        call putDecimal
        pop es
        mov si, saysScore
        mov bl, 7
        call print
        mov si, digits
        call print
        mov si, newLine
        jmp print

; --- Words -----------------------------------------------------------------------------------------------------------

; si = the room where the player is.
roomAt: movzx si, byte [here]
        shl si, 3
        add si, rooms
        ret

; si = thing bp.
thingAt:
        imul si, bp, 10
        add si, things
        ret

; bp = the thing whose word is the noun; carry set when there is none.
findThing:
        xor bp, bp
.next:  call thingAt
        mov eax, [si]
        cmp eax, [noun]
        je .found
        inc bp
        cmp bp, THINGS
        jb .next
        stc
        ret
.found: clc
        ret

; eax = the first four letters of the word at bx in capitals, filled with blanks; bx moves behind it.
word4:  mov dword [word_], '    '
        mov di, word_
.blank: mov al, [bx]
        cmp al, ' '
        jne .letters
        inc bx
        jmp .blank
.letters:
        mov al, [bx]
        or al, al
        jz .done
        inc bx
        cmp al, ' '
        je .done
        and al, 0DFh
        cmp di, word_ + 4
        jae .letters
        mov [di], al
        inc di
        jmp .letters
.done:  mov eax, [word_]
        ret

; Reads a line into `line`; a self-played tale takes the next line of its own. Esc leaves.
readLine:
        cmp byte [selfPlay], PLAY
        je .typed
        mov si, [script]
        mov di, line
.copy:  lodsb
        mov [di], al
        inc di
        or al, al
        jnz .copy
        mov [script], si
        mov si, line
        mov bl, 0Ah
.echo:  lodsb
        or al, al
        jz .echoed
        call putChar
        jmp .echo
.echoed:
        mov cx, 40
.pause: cmp byte [selfPlay], FAST_DEMO
        je .paused
        call waitFrame
        loop .pause
.paused:
        jmp .end
.typed: mov di, line
.key:   call waitKey
        cmp al, 27
        je quit
        cmp al, 13
        je .enter
        cmp al, 8
        je .back
        cmp al, ' '
        jb .key
        cmp di, line + 60
        jae .key
        mov [di], al
        inc di
        mov bl, 0Ah
        call putChar
        jmp .key
.back:  cmp di, line
        je .key
        dec di
        mov al, 8
        call putChar
        mov al, ' '
        call putChar
        mov al, 8
        call putChar
        jmp .key
.enter: mov byte [di], 0
.end:   mov si, newLine
        mov bl, 7

; Prints the text at si in colour bl; words stay whole because the texts break their lines themselves.
print:
.next:  lodsb
        cmp al, '$'
        je .done
        call putChar
        jmp .next
.done:  ret

say:    mov bl, 7
        call print
        mov si, newLine
        jmp print

; Writes al in colour bl and moves on.
putChar:
        pusha
        cmp al, ' '
        jb .move
        push ax
        mov ah, 9
        xor bh, bh
        mov cx, 1
        int 10h
        pop ax
.move:  mov ah, 0Eh
        xor bh, bh
        int 10h
        popa
        ret

verbs:
        db 'N   '
        dw goNorth
        db 'NORT'
        dw goNorth
        db 'S   '
        dw goSouth
        db 'SOUT'
        dw goSouth
        db 'E   '
        dw goEast
        db 'EAST'
        dw goEast
        db 'W   '
        dw goWest
        db 'WEST'
        dw goWest
        db 'L   '
        dw look
        db 'LOOK'
        dw look
        db 'X   '
        dw examine
        db 'EXAM'
        dw examine
        db 'TAKE'
        dw take
        db 'GET '
        dw take
        db 'DROP'
        dw drop_
        db 'I   '
        dw inventory
        db 'INVE'
        dw inventory
        db 'USE '
        dw use
        db 'OPEN'
        dw use
        db 'LIGH'
        dw use
        db 'WIND'
        dw use
        db 'SCOR'
        dw points
        db 'HELP'
        dw help
        db 'QUIT'
        dw quit
        dd 0

newLine     db 13, 10, '$'
prompt      db 13, 10, '> $'
saysWhat    db 'You turn the word over in your mind, but nothing comes of it. (HELP helps.)$'
saysNoWay   db 'There is no way there.$'
saysHere    db 'Here lies $'
saysCarry   db 'You carry $'
saysTaken   db 'Taken.$'
saysDropped db 'Dropped.$'
saysNotHere db 'You see no such thing that you could take.$'
saysNotCarried db 'You do not have that.$'
saysNothing db 'You find nothing special about it.$'
saysNothingHappens db 'Nothing happens.$'
saysHelp    db 'NORTH SOUTH EAST WEST walk (one letter will do). LOOK, EXAMINE, TAKE, DROP,', 13, 10
            db 'INVENTORY, USE, OPEN, LIGHT, WIND, SCORE. Esc or QUIT leaves.$'
saysScore   db 'Points so far: $'
saysKey     db 13, 10, '(Press a key.)$'
script      dw walkthrough

%include TALE

        section .bss
line    resb 64
word_   resd 1
verb    resd 1
noun    resd 1
moves   resw 1
here    resb 1
opened  resb 1
ended   resb 1
wanted  resb 1
places  resb 16
