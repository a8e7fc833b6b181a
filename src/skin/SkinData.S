/* The pack of pictures, as read-only data of the program. */
    .section .rodata
    .balign 64
    .globl VelmoSkinPack
    .hidden VelmoSkinPack
VelmoSkinPack:
    .incbin VELMO_SKIN_PACK
    .section .note.GNU-stack, "", %progbits
