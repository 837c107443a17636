; Lanternlight: slow waves of coloured light and a line of text. Mode 13h. Esc ends it.

%define FAST_FRAMES 200
%include "common.inc"

DARK     equ 254
TEXT_ROW equ 168                        ; the text takes 24 rows from here

start:
        call readSwitches
        mov ax, 13h
        int 10h
        push 0A000h
        pop es
        xor di, di
        mov cx, 16000
        mov eax, DARK * 01010101h
        rep stosd
        ; A sine wave of 256 steps, 0 to 63.
        fninit
        xor cx, cx
.sine:  mov [value], cx
        fild word [value]
        fldpi
        fmulp
        fidiv word [half]
        fsin
        fimul word [amplitude]
        fistp word [value]
        mov ax, [value]
        add ax, 32
        mov bx, cx
        mov [sine + bx], al
        inc cx
        cmp cx, 256
        jb .sine
        ; 8 by 8 font of the BIOS.
        push es
        mov ax, 1130h
        mov bh, 3
        int 10h
        mov [font], bp
        mov [font + 2], es
        pop es

frame:
        inc word [frames]
        call rotatePalette
        ; Every second column and row, doubled.
        push 0A000h
        pop es
        mov di, 320 * 8
        mov dx, 4
.row:   push dx
        mov bx, [frames]
        add bx, dx
        add bx, dx
        and bx, 255
        movzx bp, byte [sine + bx]      ; depends on the row only
        shl dx, 1
        mov bx, dx
        sub bx, [frames]
        and bx, 255
        movzx ax, byte [sine + bx]
        add bp, ax
        xor cx, cx
.pixel: mov bx, cx
        shl bx, 1
        add bx, bp
        add bl, [frames]
        xor bh, bh
        mov al, [sine + bx]
        mov bx, cx
        add bx, dx
        sub bl, [frames]
        xor bh, bh
        add al, [sine + bx]
        add ax, bp
        mov ah, al
        mov [es:di], ax
        mov [es:di + 320], ax
        add di, 2
        inc cx
        cmp cx, 160
        jb .pixel
        add di, 320
        pop dx
        inc dx
        cmp dx, TEXT_ROW / 2
        jb .row
        call scrollText
        call waitFrame
        cmp byte [selfPlay], PLAY
        je .hand
        mov ax, [frames]
        shr ax, 2
        mov [score], ax
        call selfPlayOver
        jae quit
.hand:  call pollKey
        jz frame
        cmp al, 27
        jne frame
        jmp quit

; 256 colours from three waves that drift against each other.
rotatePalette:
        mov dx, 3C8h
        xor al, al
        out dx, al
        inc dx
        xor cx, cx
.next:  mov bx, cx
        add bl, [frames]
        mov al, [sine + bx]
        out dx, al
        mov bx, cx
        shl bl, 1
        add bl, 80
        mov al, [sine + bx]
        shr al, 1
        out dx, al
        mov bx, cx
        sub bl, [frames]
        add bl, 120
        mov al, [sine + bx]
        out dx, al
        inc cl
        cmp cl, DARK
        jb .next
        xor al, al                      ; the last two stay black and white, for the text
        out dx, al
        out dx, al
        out dx, al
        mov al, 63
        out dx, al
        out dx, al
        out dx, al
        ret

; Draws the text three times as large as the font, moved to the left by two pixels a frame.
scrollText:
        mov bp, [frames]
        shl bp, 1
        neg bp
        add bp, 320                     ; x of the first letter
        mov si, message
.letter:
        lodsb
        cmp al, '$'
        je .end
        cmp bp, 320
        jge .done
        cmp bp, -24
        jle .skip
        push si
        movzx bx, al
        shl bx, 3
        add bx, [font]
        push ds
        mov ds, [font + 2]
        xor dx, dx                      ; row of the letter
.row:   mov ah, [bx]
        inc bx
        mov cx, bp
.column:
        mov al, DARK
        shl ah, 1
        jnc .dark
        mov al, 255
.dark:  cmp cx, 317
        ja .blank
        imul di, dx, 960
        add di, cx
        add di, 320 * TEXT_ROW
        mov [es:di], al
        mov [es:di + 1], al
        mov [es:di + 320], al
        mov [es:di + 321], al
.blank: add cx, 3
        mov di, cx
        sub di, bp
        cmp di, 24
        jb .column
        inc dx
        cmp dx, 8
        jb .row
        pop ds
        pop si
.skip:  add bp, 24
        jmp .letter
.end:   cmp bp, 0                       ; the whole text is past
        jg .done
        mov word [frames], 0
.done:  ret

value     dw 0
half      dw 128
amplitude dw 31
message   db '* L A N T E R N L I G H T *   a small room full of slow colour, made on four rainy evenings by the '
          db 'Tin Lantern crew.   press Esc when you have seen enough ...             ', '$'

        section .bss
font    resw 2
sine    resb 256
