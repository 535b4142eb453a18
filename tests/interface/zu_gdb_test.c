// What gdb_test.py looks at: objects of several classes, in the variables of a function.

#include "zu/zu.h"

void look( ZU_OBJ *any, ZU_DICT *many, ZU_STRING *text, ZU_VECTOR *items, ZU_STORE *settings, ZU_THREAD *thread );
void look( ZU_OBJ *any, ZU_DICT *many, ZU_STRING *text, ZU_VECTOR *items, ZU_STORE *settings, ZU_THREAD *thread )
{
    zuObjRelease( any );
    zuDictRelease( many );
    zuStringRelease( text );
    zuVectorRelease( items );
    zuStoreRelease( settings );
    zuThreadRelease( thread );
}

int main( void )
{
    zuRuntimeStartup( 0, -1, NULL, "looked-at", "Looked at", "1.0" );
    ZU_DICT *dict = zuDictCreate();
    zuDictSetStringKeyCstr( &dict, "key", -1, zuBoxedBoolObj( zuBoxedBoolCreate( ZU_TRUE ) ) );
    ZU_DICT *many = zuDictCreate();
    for ( ZU_INT i = 5000; i > 0; i-- ) {
        zuDictSetIntKey( &many, i, zuBoxedIntObj( zuBoxedIntCreate( i ) ) );
    }
    ZU_VECTOR *vec = zuVectorCreate();
    zuVectorAppendInt( &vec, 7 );
    zuVectorAppendStringCstr( &vec, "seven", -1 );
    ZU_STORE *inner = zuStoreCreate();
    zuStoreSetValueCstr( &inner, "depth", -1, zuStringCreateFromUtf8( "two", -1 ) );
    ZU_STORE *store = zuStoreCreate();
    zuStoreSetStoreCstr( &store, "inner", -1, inner );
    look( zuDictObj( dict ), many, zuStringCreateFromUtf8( "κόσμε \"😀\"", -1 ), vec, store, zuThreadThis() );
    return 0;
}
